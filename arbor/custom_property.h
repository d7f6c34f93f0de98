#pragma once

#include "arbor/guid.h"
#include "arbor/opaque_property.h"

#include <cstdint>

namespace arbor {

// A byte buffer that names its layout.
class CustomProperty : public OpaqueProperty {
public:
    CustomProperty(const void* data, std::uint64_t bytes, const Guid& typeId) noexcept
        : OpaqueProperty(data, bytes), _typeId(typeId) {}

    [[nodiscard]] bool isCustom() const override { return true; }
    [[nodiscard]] const Guid* getTypeId() const override { return &_typeId; }

private:
    friend class Property;

    CustomProperty(std::uint32_t type, const void* data, std::uint64_t bytes,
                   const Guid& typeId) noexcept
        : OpaqueProperty(type, data, bytes), _typeId(typeId) {}

    Guid _typeId;
};

}  // namespace arbor
