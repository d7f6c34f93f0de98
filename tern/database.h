#pragma once

#include "arbor/abstract_database.h"

namespace tern {

class IInstanceManager;

// The database of an instance manager: the registry of component classes.
class Database : public arbor::AbstractDatabase {
public:
    explicit Database(IInstanceManager* owner) noexcept : _owner(owner) {}

    virtual IInstanceManager* getInstanceManager() { return _owner; }

private:
    IInstanceManager* _owner;  // not owned, outlives us
};

}  // namespace tern
