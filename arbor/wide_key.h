#pragma once

#include <cstddef>
#include <string>

namespace arbor {

// A narrow key, converted to the wide key that it stands for. Nearly all keys are short words of
// ASCII letters, which need no memory. A long key, or one with other letters, does: std::bad_alloc.
class WideKey {
public:
    explicit WideKey(const char* key);

    [[nodiscard]] const wchar_t* text() const noexcept { return _text; }

private:
    static constexpr std::size_t kShortUnits = 48;  // terminator included
    static constexpr std::size_t kConversionLimit =
        32768;  // units of a converted key, terminator included

    wchar_t _short[kShortUnits];
    std::wstring _long;
    const wchar_t* _text = nullptr;
};

}  // namespace arbor
