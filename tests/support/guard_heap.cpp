// In Windows test programs that link this file, `new` gives every block pages of its own. A block
// ends where an inaccessible page begins, so an overrun crashes at the instruction that does it.
// The bytes that alignment leaves before that page hold a pattern, which `delete` checks. Freed
// blocks stay unmapped for a while, so a use after free crashes as well. Programs with more than
// about 20,000 live blocks cannot use this file, because the system limits the number of mappings.
#include "tests/support/replaced_new.h"

#include <windows.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t kPageBytes = 4096;
constexpr std::size_t kAlignment = 16;
constexpr std::size_t kKeptBlocks = 2048;  // freed blocks whose addresses are not used again yet
constexpr unsigned char kSlackPattern = 0xAB;
constexpr unsigned char kFreshPattern = 0xCD;
constexpr std::uint64_t kMagic = 0x6775617264656421;
constexpr UINT kExitCode = 77;

// Stands at the start of the page before the block.
struct Header {
    std::uint64_t magic;
    std::size_t bytes;
};

constexpr std::size_t roundedUp(std::size_t bytes, std::size_t unit) {
    return (bytes + unit - 1) / unit * unit;
}

[[noreturn]] void report(const char* what, const void* block) {
    char text[128];
    const int length = std::snprintf(text, sizeof text, "guard heap: %s, block %p\n", what, block);
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(length), &written,
                nullptr);
    ::TerminateProcess(::GetCurrentProcess(), kExitCode);
    __builtin_unreachable();
}

// The pages of the last freed blocks, so that their addresses do not come back at once.
class FreedBlocks {
public:
    // Takes over unmapped pages; gives the oldest back to the system.
    void keep(void* pages) noexcept {
        while (::InterlockedExchange(&_lock, 1) != 0)
            ::SwitchToThread();
        void* const oldest = _pages[_next];
        _pages[_next] = pages;
        _next = (_next + 1) % kKeptBlocks;
        ::InterlockedExchange(&_lock, 0);
        if (oldest != nullptr) ::VirtualFree(oldest, 0, MEM_RELEASE);
    }

private:
    volatile LONG _lock = 0;
    void* _pages[kKeptBlocks] = {};
    std::size_t _next = 0;
};

constinit FreedBlocks freedBlocks;

unsigned char* blockOf(unsigned char* pages, std::size_t bytes) {
    const std::size_t used = roundedUp(bytes, kAlignment);
    return pages + kPageBytes + roundedUp(used, kPageBytes) - used;
}

void checkSlack(const unsigned char* block, std::size_t bytes) {
    for (std::size_t at = bytes; at < roundedUp(bytes, kAlignment); ++at) {
        if (block[at] != kSlackPattern) report("written past the end", block);
    }
}

}  // namespace

namespace replaced_new {

void* take(std::size_t asked) noexcept {
    const std::size_t bytes = asked != 0 ? asked : 1;
    const std::size_t open = kPageBytes + roundedUp(bytes, kPageBytes);
    auto* const pages = static_cast<unsigned char*>(
        ::VirtualAlloc(nullptr, open + kPageBytes, MEM_RESERVE, PAGE_NOACCESS));
    if (pages == nullptr) return nullptr;
    if (::VirtualAlloc(pages, open, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        ::VirtualFree(pages, 0, MEM_RELEASE);
        return nullptr;
    }
    ::new (pages) Header{kMagic, bytes};
    unsigned char* const block = blockOf(pages, bytes);
    std::memset(block, kFreshPattern, bytes);
    std::memset(block + bytes, kSlackPattern, roundedUp(bytes, kAlignment) - bytes);
    return block;
}

void give(void* block) noexcept {
    if (block == nullptr) return;
    MEMORY_BASIC_INFORMATION place{};
    ::VirtualQuery(block, &place, sizeof place);
    if (place.State == MEM_RESERVE) report("deleted twice", block);
    auto* const pages = static_cast<unsigned char*>(place.AllocationBase);
    if (place.State != MEM_COMMIT || pages == nullptr)
        report("deleted, but never allocated", block);
    const Header header = *reinterpret_cast<const Header*>(pages);
    if (header.magic != kMagic || blockOf(pages, header.bytes) != block)
        report("deleted, but never allocated", block);
    checkSlack(static_cast<const unsigned char*>(block), header.bytes);
    ::VirtualFree(pages, kPageBytes + roundedUp(header.bytes, kPageBytes), MEM_DECOMMIT);
    freedBlocks.keep(pages);
}

}  // namespace replaced_new
