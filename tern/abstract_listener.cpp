#include "tern/abstract_listener.h"

namespace tern {

AbstractListener::AbstractListener() {
    setPointer(L"listener", static_cast<arbor::IListener*>(this));
}

bool AbstractListener::notify(arbor::IMessage*) {
    return false;
}

}  // namespace tern
