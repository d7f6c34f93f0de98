#pragma once

#include <algorithm>
#include <string_view>

namespace platform::simulated {

// Orders names as the system compares them: ASCII letters regardless of their case.
struct CaseInsensitive {
    using is_transparent = void;

    template <typename Character>
    static constexpr Character folded(Character character) noexcept {
        const bool isUpper = character >= Character('A') && character <= Character('Z');
        return isUpper ? static_cast<Character>(character + ('a' - 'A')) : character;
    }
    bool operator()(std::wstring_view a, std::wstring_view b) const noexcept {
        return compare(a, b);
    }
    bool operator()(std::string_view a, std::string_view b) const noexcept { return compare(a, b); }

private:
    template <typename View>
    static bool compare(View a, View b) noexcept {
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(),
            [](auto left, auto right) { return folded(left) < folded(right); });
    }
};

inline bool sameName(std::wstring_view a, std::wstring_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t left, wchar_t right) {
        return CaseInsensitive::folded(left) == CaseInsensitive::folded(right);
    });
}

}  // namespace platform::simulated
