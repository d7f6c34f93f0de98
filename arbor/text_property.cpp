#include "arbor/text_property.h"

#include "arbor/i_property.h"

#include <atomic>
#include <cstring>
#include <limits>
#include <new>

namespace arbor {

namespace {

// Stands behind the property and directly in front of the characters, so that a text pointer alone
// is enough to find it.
struct ReferenceCount {
    std::atomic<std::uint64_t> count;
};

constexpr std::size_t kTextOffset = sizeof(TextProperty) + sizeof(ReferenceCount);
static_assert(sizeof(TextProperty) % alignof(ReferenceCount) == 0);

ReferenceCount* countOf(const void* text) noexcept {
    return static_cast<ReferenceCount*>(const_cast<void*>(text)) - 1;
}

}  // namespace

TextProperty::TextProperty(std::uint32_t type, const void* text) noexcept
    : Property(type, wordOf(text)) {}

TextProperty::~TextProperty() {
    // operator delete gives the text up, together with the block. The base must not do it too.
    _word = 0;
}

template <typename Char>
TextProperty* TextProperty::withRoom(std::uint32_t type, std::size_t units, Char*& text) noexcept {
    constexpr std::size_t kMost =
        // Equally right with 2: such a block cannot be allocated either.
        (std::numeric_limits<std::size_t>::max() - kTextOffset) / sizeof(Char) - 1;
    // Equally right with >=: such a block cannot be allocated either.
    if (units > kMost) return nullptr;

    // Equally right with 2: one character of room more.
    void* block = ::operator new(kTextOffset + (units + 1) * sizeof(Char), std::nothrow);
    if (block == nullptr) return nullptr;

    void* behind = static_cast<std::byte*>(block) + sizeof(TextProperty);
    text = reinterpret_cast<Char*>(::new (behind) ReferenceCount{1} + 1);
    text[units] = Char{};
    return new (block) TextProperty(type, text);
}

TextProperty* TextProperty::make(const char* text, std::size_t bytes) noexcept {
    char* copy = nullptr;
    TextProperty* property = withRoom(PT_STRING, bytes, copy);
    if (property != nullptr) std::memcpy(copy, text, bytes);
    return property;
}

TextProperty* TextProperty::make(const wchar_t* text, std::size_t units) noexcept {
    wchar_t* copy = nullptr;
    TextProperty* property = withRoom(PT_WSTRING, units, copy);
    if (property != nullptr) std::memcpy(copy, text, units * sizeof(wchar_t));
    return property;
}

TextProperty* TextProperty::makeUtf16(const unsigned char* bytes, std::size_t units) noexcept {
    constexpr std::size_t kUnitBytes = 2;
    wchar_t* copy = nullptr;
    TextProperty* property = withRoom(PT_WSTRING, units, copy);
    if (property == nullptr) return nullptr;
    for (std::size_t unit = 0; unit < units; ++unit) {
        const unsigned char* at = bytes + unit * kUnitBytes;
        copy[unit] = static_cast<wchar_t>(at[0] | at[1] << 8);
    }
    return property;
}

void TextProperty::share(const void* text) noexcept {
    if (text != nullptr) countOf(text)->count.fetch_add(1, std::memory_order_relaxed);
}

void TextProperty::release(const void* text) noexcept {
    if (text == nullptr) return;
    ReferenceCount* references = countOf(text);
    // If the count is 1 we are the only owner, so nobody can change it: skip the decrement.
    if (references->count.load(std::memory_order_acquire) != 1 &&
        references->count.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    ::operator delete(reinterpret_cast<std::byte*>(references) - sizeof(TextProperty));
}

// NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads): as in the header
void TextProperty::operator delete(void* property) noexcept {
    release(static_cast<std::byte*>(property) + kTextOffset);
}

}  // namespace arbor
