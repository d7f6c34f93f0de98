#include "tern/abstract_listener.h"

#include "tern/component_keys.h"

#include <new>

namespace tern {

AbstractListener::AbstractListener() {
    if (!setPointer(component_key::kListener, static_cast<arbor::IListener*>(this)))
        throw std::bad_alloc();
}

bool AbstractListener::notify(arbor::IMessage*) {
    return false;
}

}  // namespace tern
