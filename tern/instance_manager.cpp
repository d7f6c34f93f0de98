#include "tern/instance_manager.h"

#include "arbor/abstract_database.h"
#include "arbor/i_property.h"
#include "arbor/property.h"
#include "arbor/property_holder.h"
#include "platform/message_pump.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "tern/class_ids.h"
#include "tern/debug_listener.h"
#include "tern/guid_text.h"
#include "tern/timer_event_generator.h"
#include "tern/velo_event_generator.h"
#include "tern/velo_listener.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace tern {

namespace {

// kept: see decision 0012
// Equally right with 101: nobody notices a millisecond.
constexpr std::uint32_t kIdleSleepMs = 100;

}  // namespace

InstanceManager::InstanceManager(const arbor::IPropertyHolder&, const std::vector<std::wstring>&)
    : _ownDatabase(this), _ownBroker(this) {
    attach(&_ownDatabase, &_ownBroker);
    registerMaker(L"TimerEventGenerator", kTimerEventGeneratorId,
                  &makeComponent<TimerEventGenerator>);
    registerMaker(L"DebugListener", kDebugListenerId, &makeComponent<DebugListener>);
    registerMaker(L"VeloEventGenerator", kVeloEventGeneratorId, &makeComponent<VeloEventGenerator>);
    registerMaker(L"VeloListener", kVeloListenerId, &makeComponent<VeloListener>);
}

void InstanceManager::registerMaker(const wchar_t* className, const arbor::Guid& guid,
                                    ComponentMaker maker) {
    using Owned = std::unique_ptr<arbor::IProperty>;
    const auto store = [this](const wchar_t* key1, const wchar_t* key2, Owned property) {
        // A missing entry would be noticed only when its class is needed: fail at once.
        if (property == nullptr || property->getData() == nullptr) throw std::bad_alloc();
        if (!_ownDatabase.set(key1, key2, property.get())) throw std::bad_alloc();
        static_cast<void>(property.release());
    };
    const std::wstring makerKey = guidText(guid);
    store(className, arbor::AbstractDatabase::kGuidKey,
          Owned(arbor::Property::createOpaque(&guid, sizeof guid)));
    store(kMakersKey, makerKey.c_str(),
          Owned(arbor::Property::createPointer(reinterpret_cast<void*>(maker))));
}

void InstanceManager::pumpOnce() {
    if (platform::isMessageWaiting()) {
        platform::dispatchOneMessage();
    } else {
        platform::sleepFor(kIdleSleepMs);
    }
}

// A try block of the whole function: an instance manager that finds no memory is null.
IInstanceManager* NewInstanceManager(const char*, int argumentCount,
                                     const char* const* arguments) try {
    std::vector<std::wstring> list;
    // Equally right with >=: the list then grows as it is filled.
    if (argumentCount > 0) list.reserve(static_cast<std::size_t>(argumentCount));
    // Equally right with 1: nothing reads the arguments of the process.
    for (int index = 0; index < argumentCount; ++index) {
        // Equally right without it: nothing reads the arguments of the process.
        list.push_back(platform::widened(arguments[index]));
    }
    arbor::PropertyHolder parameters;
    return new InstanceManager(parameters, list);
} catch (const std::bad_alloc&) {
    return nullptr;
}

void TERN_DeleteInstanceManager(IInstanceManager*& manager) {
    delete manager;
    manager = nullptr;
}

}  // namespace tern
