#include "platform/message_pump.h"

#include <windows.h>

namespace platform {

bool isMessageWaiting() noexcept {
    MSG message;
    return ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != 0;
}

bool dispatchOneMessage() {
    MSG message = {};
    // GetMessage returns -1 when it fails. That is handled like a message: `message` is then empty,
    // and an empty message belongs to no window, so dispatching it does nothing.
    if (::GetMessageA(&message, nullptr, 0, 0) == 0) return false;
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
    return true;
}

}  // namespace platform
