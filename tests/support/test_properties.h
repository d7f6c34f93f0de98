#pragma once

#include "arbor/property.h"

#include <cstdint>

namespace test {

// A property with any type code, also with one that no factory function makes.
class AnyProperty : public arbor::Property {
public:
    explicit AnyProperty(float value) noexcept : Property(arbor::PT_FLOAT, wordOf(value)) {}
    explicit AnyProperty(double value) noexcept : Property(arbor::PT_DOUBLE, wordOf(value)) {}
    explicit AnyProperty(std::uint64_t value) noexcept : AnyProperty(arbor::PT_UINT64, value) {}
    AnyProperty(std::uint32_t type, std::uint64_t word) noexcept : Property(type, Value{word}) {}

private:
    static Value wordOf(float value) noexcept {
        Value word{0};
        word.real = value;
        return word;
    }
    static Value wordOf(double value) noexcept {
        Value word{0};
        word.wideReal = value;
        return word;
    }
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

}  // namespace test
