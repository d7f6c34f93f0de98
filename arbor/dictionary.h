#pragma once

#include "arbor/key_text.h"
#include "arbor/small_vector.h"
#include "arbor/sorted_positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace arbor {

// A map with two keys to each value: the full key of the caller and a symbol that the dictionary
// issues. Values are not owned. Entries are in no order. Nearly always there is a handful of them,
// so they are stored inline and found by linear search, which is faster than any tree for so few. A
// dictionary that outgrows its inline storage sorts their positions by key and by symbol from then
// on and uses binary search. Before that, each operation searches once. Not locked: nobody may read
// while another thread writes.
template <typename Key, typename Value, typename Symbol, Symbol MaxSymbol, Symbol MinSymbol>
class dictionary {
    using Char = typename Key::value_type;

public:
    using KeyView = std::basic_string_view<Char>;
    static constexpr Symbol kNoSymbol = 0;

    // What an entry held that was taken out of the dictionary.
    struct Taken {
        Symbol symbol = kNoSymbol;
        Value value{};

        [[nodiscard]] bool found() const noexcept { return symbol != kNoSymbol; }
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
        return entry != nullptr ? entry->symbol : add(key, KeyLife::OfTheCall, value);
    }

    // Puts the value under the key, with a new symbol, and what stood there into `old`. kNoSymbol,
    // and nothing under the key, when no symbol is left. Where the key is present this needs no
    // memory; bad_alloc changes nothing.
    Symbol replace(KeyView key, Value value, Taken& old, KeyLife life = KeyLife::OfTheCall) {
        Entry* entry = entryOf(key);
        if (entry == nullptr) return add(key, life, value);
        old = exchanged(entry, value);
        if (_orders != nullptr) [[unlikely]]
            _orders->bySymbol.erase(_entries.begin(), positionOf(*entry));
        entry->symbol = kNoSymbol;  // allocateSymbol() may give the old symbol out again
        return giveSymbol(*entry);
    }

    // The same, but a key that is present keeps its symbol.
    Symbol set(KeyView key, Value value, Taken& old) {
        Entry* entry = entryOf(key);
        if (entry == nullptr) return add(key, KeyLife::OfTheCall, value);
        old = exchanged(entry, value);
        return old.symbol;
    }

    // Puts another value under the symbol, if it is in use; returns what stood there.
    Taken exchange(Symbol symbol, Value value) noexcept {
        return exchanged(entryOf(symbol), value);
    }

    // Removes the entry; the value is not destroyed.
    template <typename AnyKey>
    Taken take(AnyKey key) noexcept {
        Entry* entry = entryOf(key);
        if (entry == nullptr) return {};
        const Taken taken{entry->symbol, entry->value};
        remove(*entry);
        return taken;
    }

    bool erase(KeyView key) noexcept { return take(key).found(); }

    // Calls `visit(key, symbol, value)` for every entry in the order of the keys; `key` is a view.
    template <typename Visit>
    void forEach(Visit visit) const {
        const Entry* last = nullptr;
        for (std::size_t visited = 0; visited < _entries.size(); ++visited) {
            last = _orders != nullptr ? &_entries[_orders->byKey[visited]] : nextAfter(last);
            visit(last->name(), last->symbol, last->value);
        }
    }

    // Calls `visit(value)` for every entry, in no order.
    template <typename Visit>
    void forEachValue(Visit visit) const {
        for (const Entry& entry : _entries)
            visit(entry.value);
    }

private:
    struct Entry {
        Entry(KeyView itsKey, KeyLife life, Value itsValue) : key(itsKey, life), value(itsValue) {}

        [[nodiscard]] KeyView name() const noexcept { return key.view(); }
        [[nodiscard]] bool has(KeyView wanted) const noexcept { return key == wanted; }
        [[nodiscard]] bool has(const Char* wanted) const noexcept { return key == wanted; }
        [[nodiscard]] bool has(Symbol wanted) const noexcept { return symbol == wanted; }

        // What this leaves unused at its end has room for the symbol.
        [[no_unique_address]] KeyText<Char> key;
        Symbol symbol = kNoSymbol;
        Value value;
    };
    static constexpr std::size_t kInlineEntries = 5;  // an ordinary message carries no more
    using Entries = SmallVector<Entry, kInlineEntries>;

    // What a dictionary of many entries is searched by.
    struct Orders {
        explicit Orders(const Entries& entries) {
            for (std::uint32_t position = 0; position < entries.size(); ++position) {
                byKey.insert(entries.begin(), position);
                bySymbol.insert(entries.begin(), position);
            }
        }

        SortedPositions<Entry, &Entry::name> byKey;
        SortedPositions<Entry, &Entry::symbol> bySymbol;
    };

    [[nodiscard]] const Entry* entryOf(KeyView key) const noexcept {
        if (_orders != nullptr) [[unlikely]]
            return _orders->byKey.find(_entries.begin(), key);
        return firstWith(key);
    }
    // For a terminated key.
    [[nodiscard]] const Entry* entryOf(const Char* key) const noexcept {
        if (_orders != nullptr) [[unlikely]]
            return _orders->byKey.find(_entries.begin(), KeyView(key));
        return firstWith(key);
    }
    [[nodiscard]] const Entry* entryOf(Symbol symbol) const noexcept {
        if (_orders != nullptr) [[unlikely]]
            return _orders->bySymbol.find(_entries.begin(), symbol);
        return firstWith(symbol);
    }
    template <typename AnyKey>
    [[nodiscard]] Entry* entryOf(AnyKey key) noexcept {
        return const_cast<Entry*>(std::as_const(*this).entryOf(key));
    }

    template <typename AnyKey>
    [[nodiscard]] const Entry* firstWith(AnyKey key) const noexcept {
        for (const Entry& entry : _entries) {
            if (entry.has(key)) return &entry;
        }
        return nullptr;
    }

    // The entry with the next key after that of `last`; with the smallest key when `last` is null.
    // There must be one.
    [[nodiscard]] const Entry* nextAfter(const Entry* last) const noexcept {
        const Entry* next = nullptr;
        for (const Entry& entry : _entries) {
            if (last != nullptr && entry.name() <= last->name()) continue;
            if (next == nullptr || entry.name() < next->name()) next = &entry;
        }
        return next;
    }

    // The key must be absent. All that may throw is done before the symbol is issued, so a failure
    // costs no symbol.
    Symbol add(KeyView key, KeyLife life, Value value) {
        if (_entries.isFull()) [[unlikely]]
            makeRoom();
        Entry& entry = _entries.emplaceReserved(key, life, value);
        if (_orders != nullptr) [[unlikely]]
            _orders->byKey.insert(_entries.begin(), positionOf(entry));
        return giveSymbol(entry);
    }

    // A function of its own, so that the compiler can expand the common case in its callers.
    void makeRoom() {
        if (_orders == nullptr) _orders = std::make_unique<Orders>(_entries);
        _orders->byKey.reserve(2 * _entries.size());
        _orders->bySymbol.reserve(2 * _entries.size());
        _entries.reserveOneMore();
    }

    // Issues a symbol to an entry that has none. When none is left, the entry goes.
    Symbol giveSymbol(Entry& entry) {
        entry.symbol = allocateSymbol();
        if (entry.symbol == kNoSymbol) [[unlikely]] {
            remove(entry);
            return kNoSymbol;
        }
        if (_orders != nullptr) [[unlikely]]
            _orders->bySymbol.insert(_entries.begin(), positionOf(entry));
        return entry.symbol;
    }

    static Taken exchanged(Entry* entry, Value value) noexcept {
        if (entry == nullptr) return {};
        return Taken{entry->symbol, std::exchange(entry->value, value)};
    }

    // The last entry fills the gap.
    void remove(const Entry& entry) noexcept {
        const std::uint32_t gap = positionOf(entry);
        if (_orders != nullptr) [[unlikely]]
            leaveOrders(gap);
        _entries.eraseUnordered(gap);
    }

    void leaveOrders(std::uint32_t gap) noexcept {
        const Entry* entries = _entries.begin();
        _orders->byKey.erase(entries, gap);
        if (entries[gap].symbol != kNoSymbol) _orders->bySymbol.erase(entries, gap);
        const auto last = static_cast<std::uint32_t>(_entries.size() - 1);
        if (gap == last) return;
        _orders->byKey.renumber(entries, last, gap);
        _orders->bySymbol.renumber(entries, last, gap);
    }

    [[nodiscard]] std::uint32_t positionOf(const Entry& entry) const noexcept {
        return static_cast<std::uint32_t>(&entry - _entries.begin());
    }

    Entries _entries;
    std::unique_ptr<Orders> _orders;  // null until the entries outgrow the inline storage
    Symbol _lowestSymbol = MaxSymbol;
    Symbol _highestSymbol = MinSymbol;
};

}  // namespace arbor
