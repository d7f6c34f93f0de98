#pragma once

#include "arbor/guid.h"
#include "arbor/i_listener.h"
#include "arbor/property_holder.h"

namespace tern {

// A component that the broker calls with every message. Its bag carries itself as "listener".
class AbstractListener : public arbor::PropertyHolder, public arbor::IListener {
public:
    AbstractListener();
    ~AbstractListener() override = default;

    // Identifier of the class; lives as long as the process.
    [[nodiscard]] virtual const arbor::Guid* getClassId() const = 0;

    // Consumes nothing.
    bool notify(arbor::IMessage* message) override;
};

}  // namespace tern
