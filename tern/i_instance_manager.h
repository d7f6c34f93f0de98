#pragma once

#include "arbor/guid.h"
#include "platform/native_handle.h"

#include <cstdint>
#include <memory>
#include <string>

namespace arbor {
class IDatabase;
class PropertyHolder;
}  // namespace arbor

namespace tern {

class EventBroker;

// One module that the program registered. The module itself is not owned.
struct ModuleRecord {
    platform::NativeHandle module;
};

// The root of the framework: makes components by name, and knows the database and the broker. What
// makes or adds something may throw std::bad_alloc. Main thread only, but for getEventBroker().
class IInstanceManager {
public:
    IInstanceManager() = default;
    IInstanceManager(const IInstanceManager&) = delete;
    IInstanceManager& operator=(const IInstanceManager&) = delete;

    // The order of the operations below is part of the design (kept: see decision 0012).

    virtual void clearModules() = 0;
    // The entry of the module, which stays valid until the next addModule or clearModules.
    virtual std::unique_ptr<ModuleRecord>* addModule(platform::NativeHandle module) = 0;
    virtual std::int32_t getModuleCount() = 0;
    // False, with `module` untouched, for an index that has no record.
    virtual bool getModule(std::int32_t index, platform::NativeHandle& module) = 0;
    // Always `text`, empty when no module has the string.
    virtual std::wstring& loadString(std::wstring& text, std::uint32_t id) = 0;
    // Null when no module has the resource.
    virtual void* findInModules(const wchar_t* name, const wchar_t* type,
                                std::uint32_t language) = 0;
    virtual void* findInModules(const wchar_t* name, const wchar_t* type, std::uint32_t language,
                                void*& result) = 0;
    // Owned by the instance manager, as is the broker.
    virtual arbor::IDatabase* getDatabase() = 0;
    virtual EventBroker* getEventBroker() = 0;
    // Makes a component and hands it to the broker. True when the broker took it.
    virtual bool createInstance(const wchar_t* name, const wchar_t* arguments) = 0;
    virtual bool createInstance(const char* name, const char* arguments) = 0;
    // The caller owns the component; null for an unknown class. Null arguments are none. A
    // generator has asked for its start, so it must live until addComponent() has answered.
    virtual arbor::PropertyHolder* createInstanceByGuid(const arbor::Guid* guid,
                                                        const wchar_t* arguments) = 0;
    virtual arbor::PropertyHolder* createInstanceByGuid(const arbor::Guid* guid,
                                                        const char* arguments) = 0;
    virtual bool addComponent(arbor::PropertyHolder* component) = 0;
    virtual bool removeComponent(arbor::PropertyHolder* component, bool destroy) = 0;
    // The main loop; returns when the broker is stopped. The exit code of the process.
    virtual std::uint32_t run() = 0;
    // Handles one window message, or sleeps for a moment when none is waiting.
    virtual void pumpOnce() = 0;

    virtual ~IInstanceManager() = default;
};

}  // namespace tern
