#include "tern/abstract_listener.h"

#include <new>

namespace tern {

AbstractListener::AbstractListener() {
    if (!setPointer(L"listener", static_cast<arbor::IListener*>(this))) throw std::bad_alloc();
}

bool AbstractListener::notify(arbor::IMessage*) {
    return false;
}

}  // namespace tern
