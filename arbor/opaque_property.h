#pragma once

#include "arbor/property.h"

#include <cstdint>

namespace arbor {

// A copy of a byte buffer, owned. The buffer is null when it has no bytes or when there was no
// memory for the copy. The size is kept even then, so readers check the pointer first.
class OpaqueProperty : public Property {
public:
    OpaqueProperty(const void* data, std::uint64_t bytes) noexcept;
    ~OpaqueProperty() override;

    [[nodiscard]] bool isSimple() const override { return false; }
    [[nodiscard]] bool isOpaque() const override { return true; }
    [[nodiscard]] std::uint64_t getSize() const override { return _size; }

protected:
    // For a clone, which keeps the type code of its source.
    OpaqueProperty(std::uint32_t type, const void* data, std::uint64_t bytes) noexcept;

private:
    friend class Property;

    std::uint64_t _size;
};

}  // namespace arbor
