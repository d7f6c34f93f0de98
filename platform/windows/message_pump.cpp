#include "platform/message_pump.h"

#include <windows.h>

namespace platform {

bool isMessageWaiting() noexcept {
    MSG message;
    return ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != 0;
}

bool dispatchOneMessage() {
    MSG message = {};
    // A failure gives -1 and goes on as a message does: `message` is then empty, and an empty
    // message is for no window.
    if (::GetMessageA(&message, nullptr, 0, 0) == 0) return false;
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
    return true;
}

}  // namespace platform
