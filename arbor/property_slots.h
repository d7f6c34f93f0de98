#pragma once

#include "arbor/i_property.h"
#include "arbor/property.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace arbor {

// Inline storage for the first few numbers of a bag: most entries are numbers, and each would cost
// an allocation. A property from here is destroyed by delete like any other, which frees its slot.
// It must be destroyed before the slots are. Any thread may destroy one, at any time; only one
// thread at a time may make one, so the bag makes them under its lock.
class PropertySlots {
public:
    PropertySlots() noexcept = default;
    PropertySlots(const PropertySlots&) = delete;
    PropertySlots& operator=(const PropertySlots&) = delete;

    // The caller owns the result. It comes from the heap when all slots are taken, and is null when
    // the heap has no memory either.
    [[nodiscard]] IProperty* makeInt(std::int32_t value) noexcept;
    [[nodiscard]] IProperty* makePointer(void* pointer) noexcept;

private:
    static constexpr std::size_t kSlots = 4;

    class Slotted;
    struct Slot {
        alignas(Property) std::byte object[sizeof(Property)];
        std::atomic<bool> isTaken{false};
    };

    [[nodiscard]] Slot* takeSlot() noexcept;

    std::array<Slot, kSlots> _slots;
};

}  // namespace arbor
