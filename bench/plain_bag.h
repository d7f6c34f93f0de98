#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>

// What an engineer in a hurry would write instead of the framework's bag; the benchmarks compare
// the two. Keys and values own their texts, and an absent key reads as the caller's default. This
// bag has no lock, unlike the framework's, so the comparison favours this side.
namespace plain {

using Value = std::variant<std::int32_t, std::string, std::wstring, void*>;
using Bag = std::map<std::wstring, Value>;

inline void set(Bag& bag, const wchar_t* key, Value value) {
    bag.insert_or_assign(key, std::move(value));
}

template <typename T>
[[nodiscard]] T get(const Bag& bag, const wchar_t* key, T absent) {
    const auto found = bag.find(key);
    if (found == bag.end()) return absent;
    const T* value = std::get_if<T>(&found->second);
    return value != nullptr ? *value : absent;
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
