#include "tern/abstract_event_generator.h"

#include "arbor/i_listener.h"
#include "arbor/i_thread.h"
#include "tern/component_keys.h"

#include <new>

namespace tern {

AbstractEventGenerator::AbstractEventGenerator(const arbor::IPropertyHolder& parameters,
                                               IInstanceManager* owner)
    : _owner(owner) {
    // Without "thread" in our bag the broker would refuse us after our thread has asked to be
    // started, and would later start the thread of an object that is gone. So fail here.
    if (!setPointer(arbor::kThreadKey, static_cast<arbor::IThread*>(this))) throw std::bad_alloc();
    addObserver(static_cast<arbor::IListener*>(
        parameters.getPointer(component_key::kThreadControl, nullptr)));
}

}  // namespace tern
