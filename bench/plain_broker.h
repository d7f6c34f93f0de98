#pragma once

#include "bench/plain_bag.h"

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace plain {

class Listener {
public:
    virtual ~Listener() = default;
    virtual bool notify(const Message& message) = 0;
};

// A queue with a mutex and the loop that empties it. Any thread may post; a listener may add
// listeners while it is called, so delivery walks a copy of the list.
class Broker {
public:
    explicit Broker(std::function<void()> whenIdle) : _whenIdle(std::move(whenIdle)) {}

    void add(Listener* listener) {
        const std::lock_guard lock(_mutex);
        _listeners.push_back(listener);
    }

    void post(MessagePointer message) {
        const std::lock_guard lock(_mutex);
        _queue.push_back(std::move(message));
    }

    void stop() { _stopped = true; }

    void run() {
        while (!_stopped) {
            const MessagePointer message = takeFront();
            if (message != nullptr) {
                publish(*message);
            } else {
                _whenIdle();
            }
        }
    }

private:
    MessagePointer takeFront() {
        const std::lock_guard lock(_mutex);
        if (_queue.empty()) return nullptr;
        MessagePointer message = std::move(_queue.front());
        _queue.pop_front();
        return message;
    }

    void publish(const Message& message) {
        std::vector<Listener*> listeners;
        {
            const std::lock_guard lock(_mutex);
            listeners = _listeners;
        }
        const bool exclusive = (message.flags & 1) != 0;
        for (Listener* listener : listeners) {
            if (listener->notify(message) && exclusive) return;
        }
    }

    std::function<void()> _whenIdle;
    std::mutex _mutex;
    std::deque<MessagePointer> _queue;
    std::vector<Listener*> _listeners;  // not owned
    std::atomic<bool> _stopped{false};
};

}  // namespace plain
