#pragma once

#include "arbor/key_text.h"
#include "arbor/small_vector.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace arbor {

// A map with two keys to each value: the full key of the caller and a symbol that the dictionary
// issues. Values are not owned. Nearly always it holds a handful of entries, so they are stored
// inline and found by linear search, which is faster than any tree for so few. A dictionary that
// outgrows its inline storage is sorted by full key from then on and uses binary search. Not
// locked: nobody may read while another thread writes.
template <typename Key, typename Value, typename Symbol, Symbol MaxSymbol, Symbol MinSymbol>
class dictionary {
    using Char = typename Key::value_type;

public:
    using KeyView = std::basic_string_view<Char>;
    static constexpr Symbol kNoSymbol = 0;

    // What an entry held that was taken out of the dictionary.
    struct Taken {
        bool found = false;
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
    [[nodiscard]] bool contains(const Char* key) const noexcept { return entryOf(key) != nullptr; }
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

    // The value, or the caller's own for an absent key. Most lookups ask for an absent key, and an
    // exception for each of them would be slow.
    template <typename AnyKey>
    [[nodiscard]] Value get(AnyKey key, Value absent) const noexcept {
        const Entry* entry = entryOf(key);
        return entry != nullptr ? entry->value : absent;
    }

    // kNoSymbol for an absent key.
    template <typename AnyKey>
    [[nodiscard]] Symbol symbolOf(AnyKey key) const noexcept {
        const Entry* entry = entryOf(key);
        return entry != nullptr ? entry->symbol : kNoSymbol;
    }

    // The symbol of the new entry; the symbol of the old one, and nothing stored, when the key is
    // present; kNoSymbol, and nothing stored, when no symbol is left. bad_alloc changes nothing.
    Symbol insert(KeyView key, Value value) {
        const Entry* entry = entryOf(key);
        return entry != nullptr ? entry->symbol : add(key, value);
    }

    // Takes out what stands under the key, into `old`, and inserts the value with a new symbol.
    // kNoSymbol, and nothing under the key, when no symbol is left. Where the key is present this
    // needs no memory; bad_alloc changes nothing.
    Symbol replace(const Char* key, Value value, Taken& old) {
        Entry* entry = entryOf(key);
        if (entry == nullptr) return add(KeyView(key), value);
        old = Taken{true, entry->value};
        entry->symbol = kNoSymbol;  // allocateSymbol() may give the old symbol out again
        entry->value = value;
        entry->symbol = allocateSymbol();
        if (entry->symbol != kNoSymbol) return entry->symbol;
        remove(entry);
        return kNoSymbol;
    }

    // Puts another value under a symbol; returns the old value. The symbol must be in use.
    Value exchange(Symbol symbol, Value value) noexcept {
        return std::exchange(entryOf(symbol)->value, value);
    }

    // Removes the entry; the value is not destroyed.
    Taken take(KeyView key) noexcept { return takeOut(entryOf(key)); }
    Taken take(const Char* key) noexcept { return takeOut(entryOf(key)); }
    Taken take(Symbol symbol) noexcept { return takeOut(entryOf(symbol)); }

    bool erase(KeyView key) noexcept { return take(key).found; }

    // Calls `visit(key, symbol, value)` for every entry in the order of the keys; `key` is a view.
    template <typename Visit>
    void forEach(Visit visit) const {
        const Entry* last = nullptr;
        for (std::size_t visited = 0; visited < _entries.size(); ++visited) {
            last = isSorted() ? &_entries[visited] : nextAfter(last);
            visit(last->key.view(), last->symbol, last->value);
        }
    }

    // Calls `visit(value)` for every entry, in no order.
    template <typename Visit>
    void forEachValue(Visit visit) const {
        for (const Entry& entry : _entries)
            visit(entry.value);
    }

    void clear() noexcept { _entries.clear(); }

private:
    struct Entry {
        Entry(KeyView itsKey, Value itsValue) : key(itsKey), value(itsValue) {}

        KeyText<Char> key;
        Symbol symbol = kNoSymbol;
        Value value;
    };
    static constexpr std::size_t kInlineEntries = 5;  // an ordinary message carries no more

    [[nodiscard]] bool isSorted() const noexcept { return _entries.isOnHeap(); }

    [[nodiscard]] const Entry* entryOf(KeyView key) const noexcept {
        return isSorted() ? binarySearch(key) : linearSearch(key);
    }

    // For a terminated key. Its length is counted only when some entry begins with the same unit:
    // most lookups ask for a key that is absent.
    [[nodiscard]] const Entry* entryOf(const Char* key) const noexcept {
        if (isSorted()) [[unlikely]]
            return binarySearch(KeyView(key));
        for (const Entry& entry : _entries) {
            if (entry.key.first() == *key) return linearSearch(KeyView(key));
        }
        return nullptr;
    }

    [[nodiscard]] const Entry* binarySearch(KeyView key) const noexcept {
        const std::size_t place = lowerBound(key);
        const bool found = place < _entries.size() && _entries[place].key == key;
        return found ? &_entries[place] : nullptr;
    }

    [[nodiscard]] const Entry* linearSearch(KeyView key) const noexcept {
        for (const Entry& entry : _entries) {
            if (entry.key == key) return &entry;
        }
        return nullptr;
    }

    [[nodiscard]] const Entry* entryOf(Symbol symbol) const noexcept {
        for (const Entry& entry : _entries) {
            if (entry.symbol == symbol) return &entry;
        }
        return nullptr;
    }

    template <typename AnyKey>
    [[nodiscard]] Entry* entryOf(AnyKey key) noexcept {
        return const_cast<Entry*>(std::as_const(*this).entryOf(key));
    }

    [[nodiscard]] std::size_t lowerBound(KeyView key) const noexcept {
        const Entry* place = std::lower_bound(
            _entries.begin(), _entries.end(), key,
            [](const Entry& entry, KeyView wanted) { return entry.key.view() < wanted; });
        return static_cast<std::size_t>(place - _entries.begin());
    }

    // The entry with the next key after that of `last`; with the smallest key when `last` is null.
    // There must be one.
    [[nodiscard]] const Entry* nextAfter(const Entry* last) const noexcept {
        const Entry* next = nullptr;
        for (const Entry& entry : _entries) {
            if (last != nullptr && entry.key.view() <= last->key.view()) continue;
            if (next == nullptr || entry.key.view() < next->key.view()) next = &entry;
        }
        return next;
    }

    // The key must be absent. All that may throw is done before the symbol is issued, so a failure
    // costs no symbol.
    Symbol add(KeyView key, Value value) {
        if (_entries.size() >= kInlineEntries || isSorted()) [[unlikely]] {
            return addSorted(key, value);
        }
        Entry& entry = _entries.emplaceReserved(key, value);
        const Symbol symbol = allocateSymbol();
        entry.symbol = symbol;
        if (symbol == kNoSymbol) [[unlikely]]
            remove(&entry);
        return symbol;
    }

    // A function of its own, so that the compiler can expand the common case in its callers.
    Symbol addSorted(KeyView key, Value value) {
        if (_entries.reserveOneMore()) {
            std::sort(_entries.begin(), _entries.end(), [](const Entry& left, const Entry& right) {
                return left.key.view() < right.key.view();
            });
        }
        const std::size_t place = lowerBound(key);
        Entry& entry = _entries.emplaceReserved(key, value);
        const Symbol symbol = allocateSymbol();
        entry.symbol = symbol;
        if (symbol != kNoSymbol) {
            _entries.moveLastTo(place);
        } else {
            remove(&entry);
        }
        return symbol;
    }

    Taken takeOut(Entry* entry) noexcept {
        if (entry == nullptr) return {};
        const Taken taken{true, entry->value};
        remove(entry);
        return taken;
    }

    void remove(Entry* entry) noexcept {
        _entries.erase(static_cast<std::size_t>(entry - _entries.begin()));
    }

    SmallVector<Entry, kInlineEntries> _entries;
    Symbol _lowestSymbol = MaxSymbol;
    Symbol _highestSymbol = MinSymbol;
};

}  // namespace arbor
