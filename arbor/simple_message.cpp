#include "arbor/simple_message.h"

#include "arbor/property_holder.h"

namespace arbor {

namespace {

IPropertyHolder* sharedEmptyBag() {
    static PropertyHolder bag;
    return &bag;
}

}  // namespace

IPropertyHolder* SimpleMessage::getProperties() {
    return sharedEmptyBag();
}
IPropertyHolder* SimpleMessage::getProperties() const {
    return sharedEmptyBag();
}

}  // namespace arbor
