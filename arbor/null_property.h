#pragma once

#include "arbor/i_property.h"
#include "arbor/property.h"

namespace arbor {

// The answer of a bag for an absent key: one value for the whole process, so nobody may delete it.
class NullProperty final : public Property {
public:
    static NullProperty& instance() noexcept;
    // Whether a bag may take `property` over: false for null and for the value of the process,
    // which callers get from getProperty() and may hand to a setter without looking.
    [[nodiscard]] static bool mayBeAdopted(const IProperty* property) noexcept {
        return property != nullptr && property != &instance();
    }

    [[nodiscard]] bool isNull() const override { return true; }

private:
    NullProperty() noexcept : Property(PT_NULL, 0) {}
};

}  // namespace arbor
