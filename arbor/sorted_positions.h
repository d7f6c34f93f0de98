#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <vector>

namespace arbor {

// Finds entries by one of their keys although they stand in an array in no order: their positions,
// sorted by what `KeyOf` gives for an entry, are searched by halves. Moving a position moves four
// bytes, not an entry. Every operation takes the array, because an array that grows moves.
template <typename Entry, auto KeyOf>
class SortedPositions {
public:
    using Position = std::uint32_t;
    using Key = std::invoke_result_t<decltype(KeyOf), const Entry&>;

    // insert() needs no memory while there are no more than `count` positions. std::bad_alloc.
    void reserve(std::size_t count) { _positions.reserve(count); }

    void insert(const Entry* entries, Position position) {
        _positions.insert(placeOf(entries, keyAt(entries, position)), position);
    }
    // The position must be there, here and below.
    void erase(const Entry* entries, Position position) noexcept {
        _positions.erase(placeOf(entries, keyAt(entries, position)));
    }
    // For an entry that is about to move within the array.
    void renumber(const Entry* entries, Position from, Position to) noexcept {
        const auto place = placeOf(entries, keyAt(entries, from)) - _positions.cbegin();
        _positions[static_cast<std::size_t>(place)] = to;
    }

    // Null when no entry has the key.
    [[nodiscard]] const Entry* find(const Entry* entries, const Key& key) const noexcept {
        const auto place = placeOf(entries, key);
        if (place == _positions.cend() || keyAt(entries, *place) != key) return nullptr;
        return entries + *place;
    }

    // Positions in the order of the keys.
    [[nodiscard]] Position operator[](std::size_t index) const noexcept {
        return _positions[index];
    }

private:
    [[nodiscard]] static Key keyAt(const Entry* entries, Position position) noexcept {
        return std::invoke(KeyOf, entries[position]);
    }

    // Where the key stands, or would have to stand.
    [[nodiscard]] auto placeOf(const Entry* entries, const Key& key) const noexcept {
        return std::lower_bound(_positions.cbegin(), _positions.cend(), key,
                                [entries](Position position, const Key& wanted) {
                                    return keyAt(entries, position) < wanted;
                                });
    }

    std::vector<Position> _positions;
};

}  // namespace arbor
