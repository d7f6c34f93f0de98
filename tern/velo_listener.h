#pragma once

#include "arbor/guid.h"
#include "arbor/i_listener.h"
#include "arbor/i_property_holder.h"
#include "platform/native_handle.h"
#include "tern/abstract_listener.h"

namespace tern {

class IInstanceManager;

// Writes a record without a body to the print path for every message of its own type: the class is
// the message's code, the subcode its property "subcode". A listener that found no pipe when it was
// made never writes anything.
class VeloListener : public AbstractListener {
public:
    // Opens the pipe that the parameter "outputPipe" names. It stays open until the process ends.
    VeloListener(const arbor::IPropertyHolder& parameters, IInstanceManager* owner);

    [[nodiscard]] const arbor::Guid* getClassId() const override;
    // Always false, so that the other listeners get the message too.
    bool notify(arbor::IMessage* message) override;

private:
    platform::NativeHandle _pipe = nullptr;  // not closed, see platform/pipe.h
};

}  // namespace tern
