// Reads any command line as the monitor does. It becomes the settings of the channel and the
// parameters of a component.
#include "arbor/i_database.h"
#include "arbor/property.h"
#include "platform/process.h"
#include "platform/simulated/process_ended.h"
#include "tern/channel_settings.h"
#include "tern/guid_text.h"
#include "tern/instance_manager.h"
#include "tests/fuzz/result_notes.h"

#include <cstdlib>
#include <string>

namespace {

constexpr arbor::Guid kProbeId{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
bool wasMade = false;

arbor::PropertyHolder* probe(const arbor::IPropertyHolder& parameters, tern::IInstanceManager*) {
    wasMade = true;
    if (parameters.getPointer(L"threadControl", nullptr) == nullptr &&
        !parameters.hasProperty(L"threadControl")) {
        std::abort();
    }
    return nullptr;
}

tern::InstanceManager& manager() {
    static auto* const theOne = [] {
        auto* made = new tern::InstanceManager(arbor::PropertyHolder{}, {});
        made->getDatabase()->set(L"Makers", tern::guidText(kProbeId).c_str(),
                                 arbor::Property::createPointer(reinterpret_cast<void*>(&probe)));
        return made;
    }();
    return *theOne;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string commandLine(reinterpret_cast<const char*>(data), size);
    wasMade = false;
    bool ended = false;

    try {
        manager().createInstanceByGuid(&kProbeId, commandLine.c_str());
    } catch (const platform::ProcessEnded& end) {
        ended = true;
        if (end.code != platform::kInvalidParameterExit) std::abort();
    }

    const auto& name = tern::channelSettings().inputPipe;
    if (name.back() != L'\0') std::abort();
    if (ended == wasMade) std::abort();
    if (ended && name.front() != L'\0') std::abort();
    note("ended", ended ? 1 : 0);
    note("pipe", std::wstring_view(name.data()));
    note("printer", tern::channelSettings().printerId);
    return 0;
}
