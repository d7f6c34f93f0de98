#include "platform/message_pump.h"

#include <windows.h>

namespace platform {
namespace {

constexpr UINT kWorkMessage = WM_APP;

struct Work {
    void (*work)(void*);
    void* context;
    HHOOK hook;
};

thread_local Work waitingWork;

// A message without a window reaches no procedure, so it is caught where it leaves the queue.
LRESULT CALLBACK onMessageTaken(int code, WPARAM removal, LPARAM parameter) {
    const auto& message = *reinterpret_cast<const MSG*>(parameter);
    if (code == HC_ACTION && removal == PM_REMOVE && message.hwnd == nullptr &&
        message.message == kWorkMessage) {
        ::UnhookWindowsHookEx(waitingWork.hook);
        waitingWork.work(waitingWork.context);
    }
    return ::CallNextHookEx(nullptr, code, removal, parameter);
}

}  // namespace

bool workInNextMessage(void (*work)(void*), void* context) noexcept {
    const DWORD thread = ::GetCurrentThreadId();
    const HHOOK hook = ::SetWindowsHookExW(WH_GETMESSAGE, onMessageTaken, nullptr, thread);
    if (hook == nullptr) return false;
    waitingWork = {work, context, hook};
    // Equally right with 1: nobody reads what comes with the message.
    if (::PostThreadMessageW(thread, kWorkMessage, 0, 0) != 0) return true;
    ::UnhookWindowsHookEx(hook);
    return false;
}

bool isMessageWaiting() noexcept {
    MSG message;
    return ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != 0;
}

bool dispatchOneMessage() {
    MSG message = {};
    // GetMessage returns -1 when it fails. That is handled like a message: `message` is then empty,
    // and an empty message belongs to no window, so dispatching it does nothing.
    if (::GetMessageA(&message, nullptr, 0, 0) == 0) return false;
    // Equally right after the next: the letter is only queued.
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
    return true;
}

}  // namespace platform
