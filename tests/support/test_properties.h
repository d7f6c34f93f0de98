#pragma once

#include "arbor/opaque_property.h"
#include "arbor/property.h"
#include "arbor/synchronized.h"
#include "platform/thread.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace test {

// A property with any type code, including codes that no factory function gives.
class AnyProperty : public arbor::Property {
public:
    explicit AnyProperty(float value) noexcept : Property(arbor::PT_FLOAT, wordOf(value)) {}
    explicit AnyProperty(double value) noexcept : Property(arbor::PT_DOUBLE, wordOf(value)) {}
    explicit AnyProperty(std::uint64_t value) noexcept : AnyProperty(arbor::PT_UINT64, value) {}
    AnyProperty(std::uint32_t type, std::uint64_t word) noexcept : Property(type, word) {}
};

// A number that counts its destruction.
class CountedProperty : public AnyProperty {
public:
    CountedProperty(int& destroyed, std::uint64_t value) noexcept
        : AnyProperty(value), _destroyed(destroyed) {}
    ~CountedProperty() override { ++_destroyed; }

private:
    int& _destroyed;  // owned by the test
};

// A buffer with a type code of its own.
class TypedBuffer : public arbor::OpaqueProperty {
public:
    TypedBuffer(std::uint32_t type, const void* data, std::uint64_t bytes) noexcept
        : OpaqueProperty(type, data, bytes) {}
};

// Counts its destruction, but only if another thread can take the lock of the bag at that moment.
// So tests see whether a bag destroys properties while it holds its lock.
class LockProbe : public AnyProperty {
public:
    LockProbe(const arbor::Synchronized& bag, int& destroyedUnlocked) noexcept
        : AnyProperty(std::uint64_t{0}), _bag(bag), _destroyedUnlocked(destroyedUnlocked) {}
    ~LockProbe() override {
        constexpr std::uint32_t kLongEnoughMs = 2000;  // only a failing test waits this long
        std::atomic<std::uint32_t> id{0};
        const platform::NativeHandle other =
            platform::startThread(&takeLock, const_cast<arbor::Synchronized*>(&_bag), id);
        if (platform::waitForThread(other, kLongEnoughMs) == 0) ++_destroyedUnlocked;
        platform::closeThread(other);
    }

private:
    static std::uint32_t takeLock(void* parameter) {
        const auto& bag = *static_cast<const arbor::Synchronized*>(parameter);
        bag.lock();
        bag.unlock();
        return 0;
    }

    const arbor::Synchronized& _bag;  // owned by the test
    int& _destroyedUnlocked;          // owned by the test
};

}  // namespace test
