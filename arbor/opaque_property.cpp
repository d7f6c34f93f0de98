#include "arbor/opaque_property.h"

#include "arbor/i_property.h"

#include <cstring>
#include <new>
#include <utility>

namespace arbor {

namespace {

void* copyOf(const void* data, std::uint64_t bytes) noexcept {
    if (data == nullptr || bytes == 0 || !std::in_range<std::size_t>(bytes)) return nullptr;
    void* copy = ::operator new(static_cast<std::size_t>(bytes), std::nothrow);
    if (copy != nullptr) std::memcpy(copy, data, static_cast<std::size_t>(bytes));
    return copy;
}

}  // namespace

OpaqueProperty::OpaqueProperty(const void* data, std::uint64_t bytes) noexcept
    : OpaqueProperty(PT_OPAQUE, data, bytes) {}

OpaqueProperty::OpaqueProperty(std::uint32_t type, const void* data, std::uint64_t bytes) noexcept
    : Property(type, wordOf(copyOf(data, bytes))), _size(bytes) {}

OpaqueProperty::~OpaqueProperty() {
    ::operator delete(pointer());
    // The base frees texts by their type code. A clone of a buffer may carry the code of a text, so
    // the base must find nothing to free here.
    _word = 0;
}

}  // namespace arbor
