#pragma once

#include "arbor/abstract_thread.h"
#include "arbor/guid.h"
#include "arbor/i_property_holder.h"
#include "arbor/property_holder.h"

namespace tern {

class IInstanceManager;

// A component with a thread of its own that posts messages. Its bag carries itself as "thread".
class AbstractEventGenerator : public arbor::PropertyHolder, public arbor::AbstractThread {
public:
    ~AbstractEventGenerator() override = default;

    // Identifier of the class; lives as long as the process.
    [[nodiscard]] virtual const arbor::Guid* getClassId() const = 0;

protected:
    // Observed by whatever `parameters` name as "threadControl". `owner` is not owned and outlives
    // us. A concrete class ends its constructor with requestStart().
    AbstractEventGenerator(const arbor::IPropertyHolder& parameters, IInstanceManager* owner);

    [[nodiscard]] IInstanceManager* owner() const noexcept { return _owner; }

private:
    IInstanceManager* _owner;  // not owned
};

}  // namespace tern
