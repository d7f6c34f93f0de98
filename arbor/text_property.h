#pragma once

#include "arbor/property.h"

#include <cstddef>
#include <cstdint>

namespace arbor {

// A text and its property in one block of memory. A clone of the property carries the same text
// pointer, so the block has a reference count, and the last property to go, which may be a clone,
// frees it. Any thread may make, clone and destroy.
class TextProperty final : public Property {
public:
    // A property with a terminated copy of the text; null when there is no memory for both, or the
    // size overflows.
    [[nodiscard]] static TextProperty* make(const char* text, std::size_t bytes) noexcept;
    [[nodiscard]] static TextProperty* make(const wchar_t* text, std::size_t units) noexcept;
    // A copy of UTF-16 units in little-endian order, which may stand at any address.
    [[nodiscard]] static TextProperty* makeUtf16(const unsigned char* bytes,
                                                 std::size_t units) noexcept;
    ~TextProperty() override;

    // Adds and drops one reference to a text that make() copied. Null is ignored.
    static void share(const void* text) noexcept;
    static void release(const void* text) noexcept;

    // Drops the property's own reference; a clone may still need the block.
    // NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads): only made in a block
    static void operator delete(void* property) noexcept;

private:
    TextProperty(std::uint32_t type, const void* text) noexcept;

    // A property with a terminated text of so many units, which the caller writes through `text`.
    template <typename Char>
    static TextProperty* withRoom(std::uint32_t type, std::size_t units, Char*& text) noexcept;
    // Only into a block that has room for the text.
    static void* operator new(std::size_t, void* block) noexcept { return block; }
    static void operator delete(void*, void*) noexcept {}
};

}  // namespace arbor
