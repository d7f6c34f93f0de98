#include "tern/abstract_event_generator.h"

#include "arbor/i_listener.h"

namespace tern {

AbstractEventGenerator::AbstractEventGenerator(const arbor::IPropertyHolder& parameters,
                                               IInstanceManager* owner)
    : _owner(owner) {
    setPointer(L"thread", static_cast<arbor::IThread*>(this));
    addObserver(static_cast<arbor::IListener*>(parameters.getPointer(L"threadControl", nullptr)));
}

}  // namespace tern
