#include "arbor/null_property.h"

namespace arbor {

NullProperty& NullProperty::instance() {
    static NullProperty theOne;
    return theOne;
}

}  // namespace arbor
