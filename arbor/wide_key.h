#pragma once

#include <cstddef>
#include <string>

namespace arbor {

// A narrow key as the wide key that it stands for. Keys are short plain words, so they are widened
// in place; only a long key or one with letters of the code page needs memory (std::bad_alloc).
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
