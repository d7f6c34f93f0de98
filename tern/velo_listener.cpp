#include "tern/velo_listener.h"

#include "arbor/i_message.h"
#include "platform/pipe.h"
#include "platform/text.h"
#include "tern/class_ids.h"
#include "tern/component_keys.h"
#include "tern/message_keys.h"
#include "tern/pipe_path.h"
#include "tern/velo_record.h"

#include <cstdint>
#include <string>

namespace tern {

namespace {

constexpr char kNoPipeName[] = "unkown";  // kept: see decision 0012

}  // namespace

VeloListener::VeloListener(const arbor::IPropertyHolder& parameters, IInstanceManager*) {
    const std::wstring path =
        pipePath(platform::widened(parameters.getString(component_key::kOutputPipe, kNoPipeName)));
    if (path.empty() || !platform::waitForPipe(path.c_str())) return;
    _pipe = platform::openPipeForWriting(path.c_str());
}

const arbor::Guid* VeloListener::getClassId() const {
    return &kVeloListenerId;
}

bool VeloListener::notify(arbor::IMessage* message) {
    if (!(*message->getType() == *getClassId()) || _pipe == nullptr) return false;

    VeloHeader header;
    header.magic = kVeloMagic;
    header.recordClass = message->getCode();
    header.subcode =
        static_cast<std::uint32_t>(message->getProperties()->getInt(message_key::kSubcode, 0));
    const VeloHeaderBytes bytes = encodedHeader(header);
    platform::writePipe(_pipe, bytes.data(), kVeloHeaderBytes);
    return false;
}

}  // namespace tern
