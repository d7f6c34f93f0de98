#include "app/monitor_process.h"

#include "app/first_record.h"
#include "arbor/guid.h"
#include "arbor/i_database.h"
#include "monitor/default_lms_listener.h"
#include "platform/resource_text.h"
#include "platform/trace.h"
#include "tern/i_instance_manager.h"
#include "tern/instance_manager.h"

#include <exception>
#include <memory>
#include <stdexcept>

namespace {

constexpr wchar_t kStringsLibrary[] = L"QVK7400SMs.dll";

// The handle lives until the process ends. Without the library the alerts come without texts.
platform::NativeHandle openStrings() {
    const platform::NativeHandle strings = platform::openResourceLibrary(kStringsLibrary);
    platform::trace(strings != nullptr ? "succeed to open Strings.dll"
                                       : "Unable to open Strings.dll");
    return strings;
}

void addStatusListener(tern::IInstanceManager& manager, platform::NativeHandle instance) {
    const platform::NativeHandle strings = openStrings();
    arbor::Guid generatorId;
    arbor::Guid listenerId;
    manager.getDatabase()->getGuid(generatorId, "VeloEventGenerator");
    manager.getDatabase()->getGuid(listenerId, "VeloListener");
    auto listener =
        std::make_unique<DefaultLMSListener>(&manager, generatorId, listenerId, instance, strings);
    if (manager.addComponent(listener.get())) static_cast<void>(listener.release());
}

std::uint32_t startAndRun(tern::IInstanceManager*& manager, platform::NativeHandle instance,
                          const char* commandLine) {
    manager = tern::NewInstanceManager("version=1.0.0.0", 0, nullptr);
    if (manager == nullptr) throw std::runtime_error("tern::NewInstanceManager() failed");
    manager->addModule(instance);
    addStatusListener(*manager, instance);

    platform::trace("TERNA - create new VeloEventGenerator");
    // Without a generator the loop still runs, until somebody ends the process.
    manager->createInstance("VeloEventGenerator", commandLine);

    if (tern::EventBroker* broker = manager->getEventBroker()) waitForFirstRecord(*broker);

    platform::trace("TERNA - run ...");
    return manager->run();
}

}  // namespace

std::uint32_t runMonitor(platform::NativeHandle instance, const char* commandLine) noexcept {
    platform::trace("TERNA - VSM4000 %s", commandLine != nullptr ? commandLine : "");
    std::uint32_t exitCode = 0;
    tern::IInstanceManager* manager = nullptr;
    try {
        exitCode = startAndRun(manager, instance, commandLine);
    } catch (const std::exception& error) {
        platform::trace("TERNA - error: %s", error.what());
    } catch (...) {
        platform::trace("TERNA - unhandled exception");
    }

    platform::trace("TERNA - TERN_DeleteInstanceManager");
    if (manager != nullptr) tern::TERN_DeleteInstanceManager(manager);
    return exitCode;
}
