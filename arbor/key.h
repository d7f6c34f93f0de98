#pragma once

#include <cstdint>
#include <string_view>

namespace arbor {

// A key with its length. The compiler measures the constants of this type. Their text lives as long
// as the program, so a bag does not copy it. A key reads as its terminated text wherever one is
// wanted.
class Key {
public:
    consteval explicit Key(const wchar_t* literal) : Key(std::wstring_view(literal), true) {}
    // A text that lives as long as the key, and that a bag copies.
    [[nodiscard]] static Key of(const wchar_t* text) noexcept {
        return Key(std::wstring_view(text), false);
    }

    [[nodiscard]] constexpr std::wstring_view view() const noexcept { return {_text, _units}; }
    [[nodiscard]] constexpr bool isConstant() const noexcept { return _isConstant; }
    // NOLINTNEXTLINE(google-explicit-constructor): a constant of a key is used like its text
    constexpr operator const wchar_t*() const noexcept { return _text; }

private:
    constexpr Key(std::wstring_view text, bool isConstant) noexcept
        : _text(text.data()),
          _units(static_cast<std::uint32_t>(text.size())),
          _isConstant(isConstant) {}

    const wchar_t* _text;  // not owned
    std::uint32_t _units;
    bool _isConstant;
};

}  // namespace arbor
