#include "arbor/property_slots.h"

#include <new>

namespace arbor {

// A number at the beginning of its slot, so that the address of one is the address of the other.
class PropertySlots::Slotted final : public Property {
public:
    explicit Slotted(std::int32_t value) noexcept : Property(PT_INT, wordOf(value)) {}
    explicit Slotted(const void* target) noexcept : Property(PT_OPAQUE, wordOf(target)) {}
    ~Slotted() override = default;

    static void* operator new(std::size_t, Slot* slot) noexcept { return slot; }
    static void operator delete(void*, Slot*) noexcept {}
    // NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads): only made in a slot
    static void operator delete(void* slot) noexcept {
        static_cast<Slot*>(slot)->isTaken.store(false, std::memory_order_release);
    }
};

PropertySlots::Slot* PropertySlots::takeSlot() noexcept {
    static_assert(sizeof(Slotted) == sizeof(Property) && offsetof(Slot, object) == 0);
    for (Slot& slot : _slots) {
        // No exchange, which would lock the bus: nobody else makes a property meanwhile.
        if (slot.isTaken.load(std::memory_order_acquire)) continue;
        slot.isTaken.store(true, std::memory_order_relaxed);
        return &slot;
    }
    return nullptr;
}

IProperty* PropertySlots::makeInt(std::int32_t value) noexcept {
    Slot* slot = takeSlot();
    return slot != nullptr ? new (slot) Slotted(value) : Property::createInt(value);
}

IProperty* PropertySlots::makePointer(void* pointer) noexcept {
    Slot* slot = takeSlot();
    return slot != nullptr ? new (slot) Slotted(pointer) : Property::createPointer(pointer);
}

}  // namespace arbor
