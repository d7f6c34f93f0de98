#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace arbor {

// The key of one entry, owned. It contains no terminator. Keys are short words, so they are stored
// inline, in the object itself; only a longer key needs memory from the heap. A move never
// allocates.
template <typename Char>
class KeyText {
    static_assert(std::is_trivially_copyable_v<Char>);

public:
    using View = std::basic_string_view<Char>;
    static constexpr std::size_t kInlineUnits = 16;

    // May throw std::bad_alloc.
    explicit KeyText(View text)
        : _units(text.size()), _first(text.empty() ? Char{} : text.front()) {
        Char* own = _ownUnits;
        if (_units > kInlineUnits) own = _heap = new Char[_units];
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

    // The first unit is kept beside the key, because it tells most keys apart.
    friend bool operator==(const KeyText& key, View text) noexcept {
        if (key._units != text.size()) return false;
        return key._units == 0 ||
               (key._first == text.front() &&
                std::memcmp(key.data(), text.data(), key._units * sizeof(Char)) == 0);
    }
    // For a terminated text. Its length is not counted, because most lookups ask for an absent key.
    friend bool operator==(const KeyText& key, const Char* text) noexcept {
        if (key._first != *text) return false;
        const Char* own = key.data();
        for (std::size_t unit = 1; unit < key._units; ++unit) {
            if (own[unit] != text[unit]) return false;
        }
        return text[key._units] == Char{};
    }

private:
    [[nodiscard]] const Char* data() const noexcept {
        return _units > kInlineUnits ? _heap : _ownUnits;
    }

    void takeFrom(KeyText& other) noexcept {
        _units = other._units;
        _first = other._first;
        if (_units > kInlineUnits) {
            _heap = other._heap;
        } else {
            std::memcpy(_ownUnits, other._ownUnits, sizeof _ownUnits);
        }
        other._units = 0;
    }

    void release() noexcept {
        if (_units > kInlineUnits) delete[] _heap;
    }

    std::size_t _units = 0;
    Char _first{};
    union {
        Char _ownUnits[kInlineUnits];
        Char* _heap;  // owned
    };
};

}  // namespace arbor
