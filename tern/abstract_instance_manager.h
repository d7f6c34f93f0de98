#pragma once

#include "arbor/guid.h"
#include "arbor/i_database.h"
#include "arbor/i_property_holder.h"
#include "arbor/property_holder.h"
#include "platform/native_handle.h"
#include "tern/i_instance_manager.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace arbor {
class IPropertyHolder;
}

namespace tern {

// Everything of an instance manager but its database, its broker and the message pump.
class AbstractInstanceManager : public IInstanceManager {
public:
    static constexpr std::uint32_t kNotReady = 0xFFFFFFFF;  // exit code of a run that never began

    ~AbstractInstanceManager() override = default;

    void clearModules() override;
    std::unique_ptr<ModuleRecord>* addModule(platform::NativeHandle module) override;
    std::int32_t getModuleCount() override;
    bool getModule(std::int32_t index, platform::NativeHandle& module) override;
    std::wstring& loadString(std::wstring& text, std::uint32_t id) override;
    void* findInModules(const wchar_t* name, const wchar_t* type, std::uint32_t language) override;
    void* findInModules(const wchar_t* name, const wchar_t* type, std::uint32_t language,
                        void*& result) override;
    arbor::IDatabase* getDatabase() override { return _database; }
    EventBroker* getEventBroker() override { return _eventBroker; }
    bool createInstance(const wchar_t* name, const wchar_t* arguments) override;
    bool createInstance(const char* name, const char* arguments) override;
    arbor::PropertyHolder* createInstanceByGuid(const arbor::Guid* guid,
                                                const wchar_t* arguments) override;
    arbor::PropertyHolder* createInstanceByGuid(const arbor::Guid* guid,
                                                const char* arguments) override;
    bool addComponent(arbor::PropertyHolder* component) override;
    bool removeComponent(arbor::PropertyHolder* component, bool destroy) override;
    std::uint32_t run() override;
    void pumpOnce() override {}

    // Hooks of derived classes, in fixed order.

    // The caller owns the record.
    virtual ModuleRecord* newModuleRecord(platform::NativeHandle module);
    // Whether database and broker are ready. Once they are, neither is asked again.
    virtual bool initialize();
    virtual std::uint32_t runLoop();
    // Puts "key=value" strings into the holder, empties the list and returns the holder.
    // "inputPipe" and "printerid" go to the settings of the channel instead.
    virtual arbor::IPropertyHolder* applyArguments(std::vector<std::wstring>& arguments,
                                                   arbor::IPropertyHolder* holder);
    virtual bool findStringInModule(std::uint32_t id, platform::NativeHandle module,
                                    std::wstring& text);
    virtual bool findResourceInModule(const wchar_t* name, const wchar_t* type,
                                      std::uint32_t language, platform::NativeHandle module,
                                      void*& result);

protected:
    // Both are members of the derived class, which hands them in as soon as they are constructed.
    void attach(arbor::IDatabase* database, EventBroker* eventBroker) noexcept {
        _database = database;
        _eventBroker = eventBroker;
    }

private:
    arbor::IDatabase* _database = nullptr;  // not owned through this pointer
    EventBroker* _eventBroker = nullptr;    // not owned through this pointer
    std::vector<std::unique_ptr<ModuleRecord>> _modules;
    bool _ready = false;
};

}  // namespace tern
