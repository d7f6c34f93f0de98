#pragma once

#include "arbor/property.h"

#include <cstddef>
#include <cstdint>

namespace arbor {

// A text and its property in one block of memory. A clone of the property carries the same text
// pointer, so the text counts its holders, of which the property is one: the block goes with the
// last of them, which may be a clone. Any thread may make, clone and destroy.
class TextProperty final : public Property {
public:
    // A property with a terminated copy of the text; null when there is no memory for both, or the
    // size overflows.
    [[nodiscard]] static TextProperty* make(const char* text, std::size_t bytes) noexcept;
    [[nodiscard]] static TextProperty* make(const wchar_t* text, std::size_t units) noexcept;
    ~TextProperty() override;

    // One holder more, one holder less, of a text that make() copied. A null text is no text.
    static void share(const void* text) noexcept;
    static void release(const void* text) noexcept;

    // Gives up the property's own hold of the block; the text may still be needed.
    // NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads): only made in a block
    static void operator delete(void* property) noexcept;

private:
    TextProperty(std::uint32_t type, const void* text) noexcept;

    template <typename Char>
    static TextProperty* copied(std::uint32_t type, const Char* text, std::size_t units) noexcept;
    // Only into a block that has room for the text.
    static void* operator new(std::size_t, void* block) noexcept { return block; }
    static void operator delete(void*, void*) noexcept {}
};

}  // namespace arbor
