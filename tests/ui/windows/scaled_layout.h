#pragma once

#include "tests/ui/windows/alert_window_fixture.h"
#include "ui/alert_factory.h"

#include <map>
#include <ostream>
#include <vector>

// How dialogs follow the scale of their screen. The programs run on screens of 96, 120, 144 and 192
// dots per inch: what a dialog has there from the beginning is what it must come to anywhere else.

inline constexpr UINT kScaleChanged = 0x02E0, kSizeAtScale = 0x02E4;
inline constexpr int kBanner = 236, kHeadline = 1004, kDetail = 1012, kList = 1008, kOk = 130;

// Place and size in the dialog's client area.
struct Place {
    int left, top, width, height;
    bool operator==(const Place&) const = default;
};
void PrintTo(const Place& place, std::ostream* out);

struct ControlLook {
    Place place;
    LONG fontHeight, fontWeight;
    bool underlined;
    bool operator==(const ControlLook&) const = default;
};
void PrintTo(const ControlLook& look, std::ostream* out);

using Layout = std::map<int, ControlLook>;  // by control; 0 is the client area

// A length or a place of the design at a scale.
[[nodiscard]] int at(int pixels, int dpi);
[[nodiscard]] Place at(const Place& place, int dpi);

[[nodiscard]] SIZE screenSize();
[[nodiscard]] SIZE clientOf(HWND window);
[[nodiscard]] RECT rectOf(HWND window);
[[nodiscard]] LOGFONTW fontOf(HWND window);
[[nodiscard]] SIZE iconSize(HICON icon);
// The box around what is white in a window, from `left` on.
[[nodiscard]] Place whiteBox(HWND window, int left);
[[nodiscard]] std::vector<HWND> childrenOf(HWND dialog);
[[nodiscard]] Layout layoutOf(HWND dialog);
[[nodiscard]] int systemScale();

void changeScale(HWND dialog, int dpi, const RECT* suggested = nullptr);

// Looks at the dialog as it was opened and then at every other scale.
template <typename Look>
void atEveryScale(HWND dialog, Look look) {
    look(systemScale());
    for (const int scale : {120, 144, 192, 96, 168, 96}) {
        changeScale(dialog, scale);
        look(scale);
    }
}

// The places of a template as the system itself makes them at 96 dots per inch.
[[nodiscard]] std::map<int, Place> design(int templateId);
// Every control stands where the design puts it at that scale.
void expectDesign(HWND dialog, const std::map<int, Place>& places, int dpi);

class AlertScaleTest : public AlertWindowTest {
protected:
    [[nodiscard]] HWND window() const { return alert->window(); }
    // Opens an alert at a place of the cascade.
    void openAt(int type, int x, int y) {
        arbor::PropertyHolder description;
        alert_desktop::describe(description, type, 0);
        alert = createAlertDialog(description);
        ASSERT_NE(alert, nullptr);
        alert->setPosition(x, y);
        ASSERT_TRUE(alert->create());
    }

    const int dpi = systemScale();
};
