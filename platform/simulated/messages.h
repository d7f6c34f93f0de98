#pragma once

#include "platform/simulated/spin_lock.h"

#include <functional>
#include <list>

namespace platform::simulated {

// The queue of window messages. Only one thread of a test pumps, so there is one queue. Any thread
// may post.
class Messages {
public:
    // `procedure` runs when the message is dispatched.
    void post(std::function<void()> procedure);
    void postQuit();
    void reset();

    // For the simulated services.
    enum class Taken { Nothing, Message, Quit };
    [[nodiscard]] bool isWaiting() const noexcept;
    [[nodiscard]] Taken take(std::function<void()>& procedure) noexcept;

private:
    using Queue = std::list<std::function<void()>>;  // an empty function is a quit message

    mutable SpinLock _lock;
    Queue _queue;
};

}  // namespace platform::simulated
