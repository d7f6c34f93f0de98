#include "arbor/shared_text.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace arbor {

namespace {

// Stands directly in front of the characters.
struct Holders {
    std::atomic<std::uint64_t> count;
};

Holders* holdersOf(const void* text) noexcept {
    return static_cast<Holders*>(const_cast<void*>(text)) - 1;
}

template <typename Char>
const Char* copy(const Char* text, std::size_t units) noexcept {
    constexpr std::size_t kMost =
        (std::numeric_limits<std::size_t>::max() - sizeof(Holders)) / sizeof(Char) - 1;
    if (units > kMost) return nullptr;

    const std::size_t bytes = sizeof(Holders) + (units + 1) * sizeof(Char);
    void* block = ::operator new(bytes, std::nothrow);
    if (block == nullptr) return nullptr;

    auto* holders = new (block) Holders{1};
    auto* characters = reinterpret_cast<Char*>(holders + 1);
    std::memcpy(characters, text, units * sizeof(Char));
    characters[units] = Char{};
    return characters;
}

}  // namespace

const char* copyText(const char* text, std::size_t bytes) noexcept {
    return copy(text, bytes);
}
const wchar_t* copyText(const wchar_t* text, std::size_t units) noexcept {
    return copy(text, units);
}

void shareText(const void* text) noexcept {
    if (text != nullptr) holdersOf(text)->count.fetch_add(1, std::memory_order_relaxed);
}

void releaseText(const void* text) noexcept {
    if (text == nullptr) return;
    Holders* holders = holdersOf(text);
    if (holders->count.fetch_sub(1, std::memory_order_acq_rel) == 1) ::operator delete(holders);
}

}  // namespace arbor
