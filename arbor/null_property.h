#pragma once

#include "arbor/i_property.h"
#include "arbor/property.h"

namespace arbor {

// What a bag answers for an absent key: one value for the whole process, so nobody may delete it.
class NullProperty final : public Property {
public:
    static NullProperty& instance();

    [[nodiscard]] bool isNull() const override { return true; }

private:
    NullProperty() noexcept : Property(PT_NULL, Value{0}) {}
};

}  // namespace arbor
