#pragma once

#include <cstdint>
#include <cstring>

namespace arbor {

// A 16-byte identifier in the system's layout.
struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::uint8_t data4[8] = {};

    friend bool operator==(const Guid& left, const Guid& right) noexcept {
        return std::memcmp(&left, &right, sizeof(Guid)) == 0;
    }
    [[nodiscard]] bool isZero() const noexcept { return *this == Guid{}; }
};
static_assert(sizeof(Guid) == 16, "a GUID is copied as 16 bytes");

}  // namespace arbor
