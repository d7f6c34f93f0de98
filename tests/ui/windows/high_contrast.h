#pragma once

#include "ui/windows/display_settings.h"

#include <windows.h>
#include <array>

// As long as this object exists, the user has a high-contrast scheme: yellow on dark blue, so that
// no colour is one of ours. The messages that tell of a change are sent by the test.
class HighContrast {
public:
    static constexpr COLORREF kBack = RGB(0, 0, 64), kText = RGB(255, 255, 0);
    static constexpr COLORREF kLink = RGB(0, 255, 255);

    HighContrast() {
        for (std::size_t i = 0; i < kElements.size(); ++i)
            _before[i] = ::GetSysColor(kElements[i]);
        set(kColours);
        setHighContrastQuery([] { return true; });
    }
    ~HighContrast() {
        set(_before);
        setHighContrastQuery(nullptr);
    }
    HighContrast(const HighContrast&) = delete;
    HighContrast& operator=(const HighContrast&) = delete;

private:
    using Colours = std::array<COLORREF, 5>;
    static constexpr std::array<int, 5> kElements{COLOR_3DFACE, COLOR_WINDOW, COLOR_WINDOWTEXT,
                                                  COLOR_BTNTEXT, COLOR_HOTLIGHT};
    static constexpr Colours kColours{kBack, kBack, kText, kText, kLink};

    static void set(const Colours& colours) {
        ::SetSysColors(static_cast<int>(kElements.size()), kElements.data(), colours.data());
    }

    Colours _before{};
};
