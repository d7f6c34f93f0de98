#include "platform/message_pump.h"

#include <windows.h>

namespace platform {

bool isMessageWaiting() noexcept {
    MSG message;
    return ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != 0;
}

bool dispatchOneMessage() {
    MSG message = {};
    // Also a failure (-1) goes on: a message that could not be taken dispatches to nobody.
    if (::GetMessageA(&message, nullptr, 0, 0) == 0) return false;
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
    return true;
}

}  // namespace platform
