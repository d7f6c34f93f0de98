#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

namespace arbor {

// Whether the text of a key may be gone after the call that brings it, or is a constant.
enum class KeyLife : unsigned char { OfTheCall, OfTheProgram };

// The key of one entry. It contains no terminator. A constant is only pointed to; any other text is
// copied. A move never allocates.
template <typename Char>
class KeyText {
    static_assert(std::is_trivially_copyable_v<Char>);

public:
    using View = std::basic_string_view<Char>;

    // May throw std::bad_alloc.
    KeyText(View text, KeyLife life) : _view(text), _isOwned(life == KeyLife::OfTheCall) {
        if (!_isOwned) return;
        auto* own = new Char[text.size()];
        std::copy(text.begin(), text.end(), own);
        _view = View(own, text.size());
    }
    KeyText(KeyText&& other) noexcept
        : _view(other._view), _isOwned(std::exchange(other._isOwned, false)) {}
    KeyText& operator=(KeyText&& other) noexcept {
        std::swap(_view, other._view);
        std::swap(_isOwned, other._isOwned);
        return *this;
    }
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;
    ~KeyText() {
        if (_isOwned) delete[] _view.data();
    }

    [[nodiscard]] View view() const noexcept { return _view; }

    friend bool operator==(const KeyText& key, View text) noexcept {
        return key._view.size() == text.size() &&
               std::memcmp(key._view.data(), text.data(), text.size() * sizeof(Char)) == 0;
    }
    // For a terminated text. Its length is not counted, because most lookups ask for an absent key.
    friend bool operator==(const KeyText& key, const Char* text) noexcept {
        const Char* const own = key._view.data();
        const std::size_t units = key._view.size();
        for (std::size_t unit = 0; unit < units; ++unit) {
            if (own[unit] != text[unit]) return false;
        }
        return text[units] == Char{};
    }

private:
    View _view;
    bool _isOwned;
};

}  // namespace arbor
