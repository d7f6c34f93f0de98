#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace arbor {

// The key of one entry, owned. Keys are short words, so they stand inside the object; only a longer
// one needs memory. Moves are plain copies of bytes.
template <typename Char>
class KeyText {
    static_assert(std::is_trivially_copyable_v<Char>);

public:
    using View = std::basic_string_view<Char>;
    static constexpr std::size_t kInsideUnits = 16;

    // May throw std::bad_alloc.
    explicit KeyText(View text)
        : _units(text.size()), _first(text.empty() ? Char{} : text.front()) {
        Char* own = _inside;
        if (_units > kInsideUnits) own = _outside = new Char[_units];
        if (_units > 0) std::memcpy(own, text.data(), _units * sizeof(Char));
    }
    KeyText(KeyText&& other) noexcept { takeFrom(other); }
    KeyText& operator=(KeyText&& other) noexcept {
        if (this != &other) {
            release();
            takeFrom(other);
        }
        return *this;
    }
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;
    ~KeyText() { release(); }

    [[nodiscard]] View view() const noexcept { return View(data(), _units); }

    [[nodiscard]] bool is(View text) const noexcept {
        return _units == text.size() &&
               (_units == 0 || std::memcmp(data(), text.data(), _units * sizeof(Char)) == 0);
    }
    // Settles nearly every comparison; the terminator when the key is empty.
    [[nodiscard]] Char first() const noexcept { return _first; }

private:
    [[nodiscard]] const Char* data() const noexcept {
        return _units > kInsideUnits ? _outside : _inside;
    }

    void takeFrom(KeyText& other) noexcept {
        _units = other._units;
        _first = other._first;
        if (_units > kInsideUnits) {
            _outside = other._outside;
        } else {
            std::memcpy(_inside, other._inside, sizeof _inside);
        }
        other._units = 0;
    }

    void release() noexcept {
        if (_units > kInsideUnits) delete[] _outside;
    }

    std::size_t _units = 0;
    Char _first{};
    union {
        Char _inside[kInsideUnits];
        Char* _outside;  // owned
    };
};

}  // namespace arbor
