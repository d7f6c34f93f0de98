#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

// What an engineer in a hurry would write instead of the framework's bag; the benchmarks compare
// the two. Keys and values own their texts, and an absent key reads as the caller's default. Each
// operation searches once, by a view: only a new entry builds a std::wstring. This bag has no lock,
// unlike the framework's, so the comparison favours this side.
namespace plain {

using Value = std::variant<std::int32_t, std::string, std::wstring, void*>;
using Bag = std::map<std::wstring, Value, std::less<>>;

inline void set(Bag& bag, std::wstring_view key, Value value) {
    const auto place = bag.lower_bound(key);
    if (place != bag.end() && place->first == key) {
        place->second = std::move(value);
    } else {
        bag.emplace_hint(place, key, std::move(value));
    }
}

template <typename T>
[[nodiscard]] T get(const Bag& bag, std::wstring_view key, T absent) {
    const auto found = bag.find(key);
    if (found == bag.end()) return absent;
    const T* value = std::get_if<T>(&found->second);
    if (value == nullptr) return absent;
    return *value;
}

inline void remove(Bag& bag, std::wstring_view key) {
    const auto found = bag.find(key);
    if (found != bag.end()) bag.erase(found);
}

// A message as the plain queue carries it.
struct Message {
    const void* type;
    std::uint32_t code;
    std::uint32_t flags;
    Bag properties{};
};
using MessagePointer = std::unique_ptr<Message>;

}  // namespace plain
