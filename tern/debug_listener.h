#pragma once

#include "arbor/guid.h"
#include "arbor/i_listener.h"
#include "arbor/i_property_holder.h"
#include "tern/abstract_listener.h"

namespace tern {

class IInstanceManager;

// Formats every message as text, for a developer who stops here with a debugger. Consumes nothing.
class DebugListener : public AbstractListener {
public:
    DebugListener(const arbor::IPropertyHolder& parameters, IInstanceManager* owner);

    [[nodiscard]] const arbor::Guid* getClassId() const override;
    bool notify(arbor::IMessage* message) override;
};

}  // namespace tern
