#include "tern/abstract_instance_manager.h"

#include "arbor/i_database.h"
#include "arbor/i_listener.h"
#include "arbor/i_property.h"
#include "arbor/i_property_holder.h"
#include "arbor/number_text.h"
#include "arbor/property_holder.h"
#include "platform/process.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "tern/channel_settings.h"
#include "tern/component_keys.h"
#include "tern/component_maker.h"
#include "tern/event_broker.h"
#include "tern/guid_text.h"
#include "tern/pipe_path.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace tern {

namespace {

// Two spaces in a row give an empty piece, which applyArguments skips.
std::vector<std::wstring> splitAtSpaces(std::wstring_view text) {
    std::vector<std::wstring> pieces;
    for (;;) {
        const std::size_t space = text.find(L' ');
        pieces.emplace_back(text.substr(0, space));
        if (space == std::wstring_view::npos) return pieces;
        text.remove_prefix(space + 1);
    }
}

// A name that is too long for the path of a pipe comes from a broken command line: no print path
// would ever write to us. The process ends with the exit code of the run-time library for an
// invalid parameter (see decision 0008).
void setInputPipe(const std::wstring& name) {
    auto& buffer = channelSettings().inputPipe;
    buffer.fill(L'\0');
    static_assert(kLongestPipeName < ChannelSettings::kPipeNameUnits);
    if (name.size() > kLongestPipeName) {
        platform::trace("TERNA - inputPipe has %u characters, the limit is %u",
                        static_cast<unsigned>(name.size()),
                        static_cast<unsigned>(kLongestPipeName));
        platform::endProcess(platform::kInvalidParameterExit);
    }
    std::copy(name.begin(), name.end(), buffer.begin());
}

void applyArgument(const std::wstring& argument, arbor::IPropertyHolder& holder) {
    const std::size_t equals = argument.find(L'=');
    if (equals == std::wstring::npos) {
        holder.setWString(argument.c_str(), L"");
        return;
    }
    const std::wstring key = argument.substr(0, equals);
    const std::wstring value = argument.substr(equals + 1);
    if (key == component_key::kInputPipe) {
        setInputPipe(value);
    } else if (key == component_key::kPrinterId) {
        arbor::parsedDecimal(value.c_str(), channelSettings().printerId);
    } else {
        holder.setWString(key.c_str(), value.c_str());
    }
}

}  // namespace

void AbstractInstanceManager::clearModules() {
    _modules.clear();
}

std::unique_ptr<ModuleRecord>* AbstractInstanceManager::addModule(platform::NativeHandle module) {
    // Here and below an entry may be empty: a derived class may make no record, and whoever gets an
    // entry from this operation may empty it.
    for (auto& record : _modules) {
        if (record != nullptr && record->module == module) return &record;
    }
    // Owned before it goes into the list, because the list may find no memory to grow.
    std::unique_ptr<ModuleRecord> record(newModuleRecord(module));
    _modules.push_back(std::move(record));
    return &_modules.back();
}

ModuleRecord* AbstractInstanceManager::newModuleRecord(platform::NativeHandle module) {
    return new ModuleRecord{module};
}

std::int32_t AbstractInstanceManager::getModuleCount() {
    return static_cast<std::int32_t>(_modules.size());
}

bool AbstractInstanceManager::getModule(std::int32_t index, platform::NativeHandle& module) {
    if (index < 0 || index >= getModuleCount()) return false;
    const auto& record = _modules[static_cast<std::size_t>(index)];
    if (record == nullptr) return false;
    module = record->module;
    return true;
}

std::wstring& AbstractInstanceManager::loadString(std::wstring& text, std::uint32_t id) {
    text.clear();
    for (const auto& record : _modules) {
        if (record != nullptr && findStringInModule(id, record->module, text)) break;
    }
    return text;
}

void* AbstractInstanceManager::findInModules(const wchar_t* name, const wchar_t* type,
                                             std::uint32_t language) {
    void* result = nullptr;
    return AbstractInstanceManager::findInModules(name, type, language, result);
}

void* AbstractInstanceManager::findInModules(const wchar_t* name, const wchar_t* type,
                                             std::uint32_t language, void*& result) {
    result = nullptr;
    for (const auto& record : _modules) {
        if (record != nullptr &&
            findResourceInModule(name, type, language, record->module, result)) {
            break;
        }
    }
    return result;
}

bool AbstractInstanceManager::findStringInModule(std::uint32_t, platform::NativeHandle,
                                                 std::wstring&) {
    return false;
}

bool AbstractInstanceManager::findResourceInModule(const wchar_t*, const wchar_t*, std::uint32_t,
                                                   platform::NativeHandle, void*&) {
    return false;
}

bool AbstractInstanceManager::createInstance(const wchar_t* name, const wchar_t* arguments) {
    arbor::Guid guid;
    _database->getGuid(guid, name);
    if (guid.isZero()) return false;
    // The broker owns what it takes. A component that it refuses is destroyed here, for the caller
    // never sees it.
    std::unique_ptr<arbor::PropertyHolder> component(createInstanceByGuid(&guid, arguments));
    if (!addComponent(component.get())) return false;
    static_cast<void>(component.release());  // owned by the broker from now on
    return true;
}

bool AbstractInstanceManager::createInstance(const char* name, const char* arguments) {
    const std::wstring wideName = platform::widened(name);
    if (arguments == nullptr) return createInstance(wideName.c_str(), nullptr);
    return createInstance(wideName.c_str(), platform::widened(arguments).c_str());
}

arbor::PropertyHolder* AbstractInstanceManager::createInstanceByGuid(const arbor::Guid* guid,
                                                                     const wchar_t* arguments) {
    const arbor::IProperty* property = _database->get(kMakersKey, guidText(*guid).c_str());
    if (property->isNull()) return nullptr;
    const auto maker = reinterpret_cast<ComponentMaker>(property->getData());
    if (maker == nullptr) return nullptr;

    arbor::PropertyHolder parameters;
    parameters.setPointer(component_key::kThreadControl,
                          static_cast<arbor::IListener*>(_eventBroker));
    std::vector<std::wstring> list;
    if (arguments != nullptr) list = splitAtSpaces(arguments);
    applyArguments(list, &parameters);
    return maker(parameters, this);
}

arbor::PropertyHolder* AbstractInstanceManager::createInstanceByGuid(const arbor::Guid* guid,
                                                                     const char* arguments) {
    if (arguments == nullptr)
        return createInstanceByGuid(guid, static_cast<const wchar_t*>(nullptr));
    return createInstanceByGuid(guid, platform::widened(arguments).c_str());
}

arbor::IPropertyHolder* AbstractInstanceManager::applyArguments(
    std::vector<std::wstring>& arguments, arbor::IPropertyHolder* holder) {
    for (const std::wstring& argument : arguments) {
        if (!argument.empty()) applyArgument(argument, *holder);
    }
    arguments.clear();
    return holder;
}

bool AbstractInstanceManager::addComponent(arbor::PropertyHolder* component) {
    return _eventBroker->addComponent(component);
}

bool AbstractInstanceManager::removeComponent(arbor::PropertyHolder* component, bool destroy) {
    return _eventBroker->removeComponent(component, destroy);
}

std::uint32_t AbstractInstanceManager::run() {
    return initialize() ? runLoop() : kNotReady;
}

bool AbstractInstanceManager::initialize() {
    if (!_ready) _ready = _database->isReady() && _eventBroker->isReady();
    return _ready;
}

std::uint32_t AbstractInstanceManager::runLoop() {
    return _ready ? static_cast<std::uint32_t>(_eventBroker->run()) : kNotReady;
}

}  // namespace tern
