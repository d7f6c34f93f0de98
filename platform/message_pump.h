#pragma once

// The window messages of the calling thread.
namespace platform {

// Whether a message is waiting. The message stays in the queue.
[[nodiscard]] bool isMessageWaiting() noexcept;

// Takes one message, translates and dispatches it; blocks while there is none. A quit message is
// taken and dropped: this program ends with its print job, never by WM_QUIT. Returns false for it.
bool dispatchOneMessage();

// Makes the next message of the calling thread one that does `work(context)`, which must not throw.
// False when the system refuses: then nothing is done. The thread may ask again only afterwards.
bool workInNextMessage(void (*work)(void*), void* context) noexcept;

}  // namespace platform
