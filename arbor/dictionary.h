#pragma once

#include "arbor/small_vector.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace arbor {

// A map with two keys to each value: the full key of the caller and a symbol that the dictionary
// issues. Values are not owned. Holds a handful of entries, so both maps are one small sorted
// array.
template <typename Key, typename Value, typename Symbol, Symbol MaxSymbol, Symbol MinSymbol>
class dictionary {
public:
    using KeyView = std::basic_string_view<typename Key::value_type>;
    static constexpr Symbol kNoSymbol = 0;

    // An entry taken out of the dictionary: putting it back under its key allocates nothing.
    struct Taken {
        bool found = false;
        Key key;
        Value value{};
    };

    dictionary() = default;
    dictionary(const dictionary&) = delete;
    dictionary& operator=(const dictionary&) = delete;

    // A symbol that no entry has; kNoSymbol when all are in use. Symbols rise from the smallest,
    // then fall below the first one, then fill gaps.
    virtual Symbol allocateSymbol() {
        if (_highestSymbol != MaxSymbol) return noteSymbol(_highestSymbol + 1);
        if (_lowestSymbol > MinSymbol) return noteSymbol(_lowestSymbol - 1);
        for (Symbol symbol = MinSymbol + 1; symbol < MaxSymbol; ++symbol) {
            if (entryOf(symbol) == nullptr) return noteSymbol(symbol);
        }
        return kNoSymbol;
    }

    // Remembers that the symbol was issued, and returns it.
    virtual Symbol noteSymbol(Symbol symbol) {
        _highestSymbol = std::max(_highestSymbol, symbol);
        _lowestSymbol = std::min(_lowestSymbol, symbol);
        return symbol;
    }

    virtual ~dictionary() = default;

    [[nodiscard]] std::size_t size() const noexcept { return _entries.size(); }
    [[nodiscard]] bool contains(KeyView key) const noexcept { return entryOf(key) != nullptr; }
    [[nodiscard]] bool contains(Symbol symbol) const noexcept { return entryOf(symbol) != nullptr; }

    // The value, or std::logic_error for an absent key.
    [[nodiscard]] Value get(KeyView key) const {
        const Entry* entry = entryOf(key);
        if (entry == nullptr) throw std::logic_error("[<dictionary>::get] full key not found");
        return entry->value;
    }
    [[nodiscard]] Value get(Symbol symbol) const {
        const Entry* entry = entryOf(symbol);
        if (entry == nullptr) throw std::logic_error("[<dictionary>::get] symbolic key not found");
        return entry->value;
    }

    // The value, or the caller's own for an absent key. Absent keys are the common case: no
    // exception.
    template <typename AnyKey>
    [[nodiscard]] Value get(AnyKey key, Value absent) const noexcept {
        const Entry* entry = entryOf(key);
        return entry != nullptr ? entry->value : absent;
    }

    // kNoSymbol for an absent key.
    [[nodiscard]] Symbol symbolOf(KeyView key) const noexcept {
        const Entry* entry = entryOf(key);
        return entry != nullptr ? entry->symbol : kNoSymbol;
    }

    // The symbol of the new entry; the symbol of the old one, and nothing stored, when the key is
    // present; kNoSymbol, and nothing stored, when no symbol is left. bad_alloc changes nothing.
    Symbol insert(KeyView key, Value value) {
        const std::size_t place = lowerBound(key);
        if (isAt(place, key)) return _entries[place].symbol;
        return insertAt(place, Key(key), value);
    }

    // Puts a value under the key of an entry that was just taken out, with a new symbol: kNoSymbol
    // when none is left. Allocates nothing.
    Symbol putBack(Taken&& taken, Value value) noexcept {
        const std::size_t place = lowerBound(taken.key);
        return insertAt(place, std::move(taken.key), value);
    }

    // Puts another value under a symbol; returns the old value. The symbol must be in use.
    Value exchange(Symbol symbol, Value value) noexcept {
        return std::exchange(const_cast<Entry*>(entryOf(symbol))->value, value);
    }

    // Removes the entry; the value is not destroyed.
    Taken take(KeyView key) noexcept {
        const Entry* entry = entryOf(key);
        return entry != nullptr ? takeAt(static_cast<std::size_t>(entry - _entries.begin()))
                                : Taken{};
    }
    Taken take(Symbol symbol) noexcept {
        const Entry* entry = entryOf(symbol);
        return entry != nullptr ? takeAt(static_cast<std::size_t>(entry - _entries.begin()))
                                : Taken{};
    }

    bool erase(KeyView key) noexcept { return take(key).found; }

    // Calls `visit(key, symbol, value)` for every entry in the order of the keys.
    template <typename Visit>
    void forEach(Visit visit) const {
        for (const Entry& entry : _entries)
            visit(entry.key, entry.symbol, entry.value);
    }

    void clear() noexcept { _entries.clear(); }

private:
    struct Entry {
        Key key;
        Symbol symbol;
        Value value;
    };
    static constexpr std::size_t kInlineEntries = 5;  // an ordinary message carries no more

    [[nodiscard]] const Entry* entryOf(KeyView key) const noexcept {
        if (_entries.size() <= kInlineEntries) {
            for (const Entry& entry : _entries) {
                if (entry.key.size() == key.size() && KeyView(entry.key) == key) return &entry;
            }
            return nullptr;
        }
        const std::size_t place = lowerBound(key);
        return isAt(place, key) ? &_entries[place] : nullptr;
    }

    [[nodiscard]] const Entry* entryOf(Symbol symbol) const noexcept {
        for (const Entry& entry : _entries) {
            if (entry.symbol == symbol) return &entry;
        }
        return nullptr;
    }

    [[nodiscard]] std::size_t lowerBound(KeyView key) const noexcept {
        const Entry* place = std::lower_bound(
            _entries.begin(), _entries.end(), key,
            [](const Entry& entry, KeyView wanted) { return KeyView(entry.key) < wanted; });
        return static_cast<std::size_t>(place - _entries.begin());
    }

    [[nodiscard]] bool isAt(std::size_t place, KeyView key) const noexcept {
        return place < _entries.size() && KeyView(_entries[place].key) == key;
    }

    Symbol insertAt(std::size_t place, Key&& key, Value value) {
        _entries.reserveOneMore();
        const Symbol symbol = allocateSymbol();
        if (symbol != kNoSymbol) _entries.insert(place, Entry{std::move(key), symbol, value});
        return symbol;
    }

    Taken takeAt(std::size_t index) noexcept {
        Entry& entry = _entries[index];
        Taken taken{true, std::move(entry.key), entry.value};
        _entries.erase(index);
        return taken;
    }

    SmallVector<Entry, kInlineEntries> _entries;  // sorted by key
    Symbol _lowestSymbol = MaxSymbol;
    Symbol _highestSymbol = MinSymbol;
};

}  // namespace arbor
