#pragma once

#include "arbor/guid.h"
#include "arbor/i_listener.h"
#include "arbor/i_property_holder.h"
#include "tern/abstract_listener.h"

namespace tern {

class IInstanceManager;

// Puts every message into words, for a debugger to stop at. Takes nothing.
class DebugListener : public AbstractListener {
public:
    DebugListener(const arbor::IPropertyHolder& parameters, IInstanceManager* owner);

    [[nodiscard]] const arbor::Guid* getClassId() const override;
    bool notify(arbor::IMessage* message) override;
};

}  // namespace tern
