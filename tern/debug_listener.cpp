#include "tern/debug_listener.h"

#include "arbor/i_message.h"
#include "arbor/number_text.h"
#include "tern/class_ids.h"
#include "tern/guid_text.h"

#include <cstdint>
#include <string>

namespace tern {

DebugListener::DebugListener(const arbor::IPropertyHolder&, IInstanceManager*) {}

const arbor::Guid* DebugListener::getClassId() const {
    return &kDebugListenerId;
}

bool DebugListener::notify(arbor::IMessage* message) {
    const std::string code = arbor::decimalText(std::uint64_t{message->getCode()});
    const std::wstring words =
        std::wstring(code.begin(), code.end()) + L" : " + guidText(*message->getType()) + L"\n";
    static_cast<void>(words);  // shown nowhere; a breakpoint on the next line can read it
    return false;
}

}  // namespace tern
