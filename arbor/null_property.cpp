#include "arbor/null_property.h"

namespace arbor {

NullProperty& NullProperty::instance() noexcept {
    static NullProperty theOne;
    return theOne;
}

}  // namespace arbor
