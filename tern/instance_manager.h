#pragma once

#include "arbor/guid.h"
#include "arbor/i_property_holder.h"
#include "tern/abstract_instance_manager.h"
#include "tern/component_maker.h"
#include "tern/database.h"
#include "tern/event_broker.h"
#include "tern/i_instance_manager.h"

#include <string>
#include <vector>

namespace tern {

// The instance manager of the monitor: knows the makers of the framework's components and pumps the
// window messages of the main thread.
class InstanceManager : public AbstractInstanceManager {
public:
    InstanceManager(const arbor::IPropertyHolder& parameters,
                    const std::vector<std::wstring>& arguments);
    ~InstanceManager() override = default;

    // A quit message does not end the program; it is dropped.
    void pumpOnce() override;

private:
    void registerMaker(const wchar_t* className, const arbor::Guid& guid, ComponentMaker maker);

    // In this order, so that the broker is destroyed first, and with it every component. Components
    // may use the database until then.
    Database _ownDatabase;
    EventBroker _ownBroker;
};

// The caller owns the result; null when it cannot be allocated. The settings and the arguments are
// accepted and not used; `argumentCount` may be 0 and `arguments` null. The names of this function
// and of the next are kept: see decision 0012.
IInstanceManager* NewInstanceManager(const char* settings, int argumentCount,
                                     const char* const* arguments);

// Destroys the instance manager and everything that it owns, and forgets it.
void TERN_DeleteInstanceManager(IInstanceManager*& manager);

}  // namespace tern
