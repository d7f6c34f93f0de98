#include "tern/event_broker.h"

#include "arbor/abstract_thread.h"
#include "arbor/i_property_holder.h"
#include "arbor/i_thread.h"
#include "arbor/message.h"
#include "arbor/property_holder.h"
#include "arbor/scoped_lock.h"
#include "arbor/simple_message.h"
#include "tern/component_keys.h"
#include "tern/i_instance_manager.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

namespace tern {

namespace {

using BrokerLock = arbor::ScopedLock<arbor::Mutex>;

template <typename Array, typename Element>
bool removeFirst(Array& array, const Element* element) {
    const auto place = std::find(array.begin(), array.end(), element);
    if (place == array.end()) return false;
    array.erase(static_cast<std::size_t>(place - array.begin()));
    return true;
}

arbor::IThread* threadOf(const arbor::IPropertyHolder& holder) {
    return static_cast<arbor::IThread*>(holder.getPointer(arbor::kThreadKey, nullptr));
}

arbor::IListener* listenerOf(const arbor::IPropertyHolder& holder) {
    return static_cast<arbor::IListener*>(holder.getPointer(component_key::kListener, nullptr));
}

// Counts for its own lifetime.
class Counted {
public:
    explicit Counted(int& count) noexcept : _count(count) { ++_count; }
    ~Counted() { --_count; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    int& _count;
};

}  // namespace

EventBroker::~EventBroker() {
    // Before the lock is taken: a generator's thread that is inside may need the lock to leave.
    _use.close();
    {
        const BrokerLock lock(*this);
        // A component may publish on its way out. Listeners that are gone must not be called, and
        // nobody expects to be called any more.
        _listeners.clear();
        _snapshotIsOld = true;
        // Each is taken out before it is deleted: its destructor may add or remove others. Its
        // place stays, empty: to close the gap each time would take a thousand components a million
        // moves.
        for (std::size_t place = 0; place < _components.size(); ++place) {
            const std::unique_ptr<arbor::PropertyHolder> component(
                std::exchange(_components[place], nullptr));
        }
    }
    for (std::deque<MessageReference>* queue : {&_queue, &_inHand}) {
        while (!queue->empty())
            queue->pop_back();
    }
}

bool EventBroker::notify(arbor::IMessage* message) {
    if (!(*message->getType() == arbor::AbstractThread::ThreadMessage::type())) return false;
    arbor::IThread* thread = threadOf(*message->getProperties());
    if (thread == nullptr) return false;

    switch (static_cast<arbor::ThreadCode>(message->getCode())) {
        case arbor::ThreadCode::StartRequest:
            queueThread(thread);
            return true;
        // Sent by start(), which run() calls while it holds the lock. There is nothing to do, so it
        // is not taken again.
        case arbor::ThreadCode::Starting:
            return true;
        case arbor::ThreadCode::Finished: {
            const arbor::Rundown::Visit visit(_use);
            // A destruction holds the lock and waits for this thread: both would wait for ever.
            if (!visit) return true;
            // Nothing to record: the thread stays among the running ones. With the lock the ending
            // thread waits while the broker starts threads.
            const BrokerLock lock(*this);
            return true;
        }
    }
    return false;
}

void EventBroker::queueThread(arbor::IThread* thread) {
    const arbor::Rundown::Visit visit(_use);
    if (!visit) return;
    const BrokerLock lock(*this);
    _threadsToStart.push_back(thread);
}

void EventBroker::publish(arbor::IMessage* message) {
    if (!_snapshotIsOld) {
        deliver(message, _snapshot);
    } else if (_deliveries == 0) {
        copyListeners(_snapshot);
        deliver(message, _snapshot);
    } else {
        // Inside a delivery that walks over the shared copy, after a change: take another one.
        Listeners own;
        copyListeners(own);
        deliver(message, own);
    }
}

void EventBroker::copyListeners(Listeners& copy) {
    const BrokerLock lock(*this);
    copy.clear();
    for (arbor::IListener* listener : _listeners)
        copy.append(listener);
    if (&copy == &_snapshot) _snapshotIsOld = false;
}

void EventBroker::deliver(arbor::IMessage* message, const Listeners& listeners) {
    const Counted delivery(_deliveries);
    // Asked before delivery, so that a listener that changes the flags does not stop this delivery.
    const bool exclusive = message->isExclusive();
    for (arbor::IListener* listener : listeners) {
        const bool taken = listener->notify(message);
        if (taken && exclusive) return;
    }
}

bool EventBroker::stop(const arbor::Guid*, std::uint32_t) {
    const arbor::Rundown::Visit visit(_use);
    if (!visit) return true;
    const BrokerLock lock(*this);
    _stopped = true;
    return true;
}

std::int32_t EventBroker::run() {
    while (!_stopped) {
        if (_inHand.empty() && !takeQueued()) {
            _owner->pumpOnce();
            continue;
        }
        const MessageReference message = std::move(_inHand.front());
        _inHand.pop_front();
        publish(message.get());
    }
    return 0;
}

bool EventBroker::isIdle() {
    const BrokerLock lock(*this);
    return !_stopped && _inHand.empty() && _queue.empty();
}

bool EventBroker::takeQueued() {
    const BrokerLock lock(*this);
    if (_queue.empty()) {
        startWaitingThreads();
        return false;
    }
    _inHand.swap(_queue);
    return true;
}

void EventBroker::startWaitingThreads() {
    // Each is taken out before it is started: an observer of the start may add or remove
    // components. Threads that are added meanwhile wait for the next idle turn, or this loop might
    // never end.
    for (std::size_t left = _threadsToStart.size(); left > 0 && !_threadsToStart.empty(); --left) {
        arbor::IThread* thread = _threadsToStart.front();
        // Equally right without it or after the next or with nullptr for thread: only a debugger
        // reads the list of running threads.
        _runningThreads.append(thread);
        _threadsToStart.pop_front();
        thread->start();
    }
}

// Function try blocks, here and below: their handlers run without the lock.
bool EventBroker::post(const arbor::Guid* type, std::uint32_t code, std::uint32_t flags,
                       arbor::PropertyHolder* properties) try {
    if (properties != nullptr) {
        return enqueue(std::make_shared<arbor::Message>(type, code, flags, properties));
    }
    return enqueue(std::make_shared<arbor::SimpleMessage>(type, code, flags));
} catch (const std::bad_alloc&) {
    return false;
}

bool EventBroker::enqueue(MessageReference message) try {
    const arbor::Rundown::Visit visit(_use);
    if (!visit) return false;
    const BrokerLock lock(*this);
    _queue.push_back(std::move(message));
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool EventBroker::postExclusive(const arbor::Guid* type, std::uint32_t code, std::uint32_t flags,
                                arbor::PropertyHolder* properties) {
    return post(type, code, flags | arbor::kExclusiveFlag, properties);
}

bool EventBroker::addComponent(arbor::PropertyHolder* component) {
    if (component == nullptr) return false;
    arbor::IThread* thread = threadOf(*component);
    arbor::IListener* listener = listenerOf(*component);
    if (thread == nullptr && listener == nullptr) return false;

    if (component->setPointer(component_key::kBroker, this) && enroll(component, thread, listener))
        return true;
    // Out of memory. The caller keeps the component and may destroy it together with its thread,
    // which may have asked long ago to be started: it must not be started any more.
    component->removeProperty(component_key::kBroker);
    if (thread != nullptr) forgetWaitingThread(thread);
    return false;
}

bool EventBroker::enroll(arbor::PropertyHolder* component, arbor::IThread* thread,
                         arbor::IListener* listener) try {
    const BrokerLock lock(*this);
    // Equally right without it: addComponent() removes the thread.
    // Equally right after the next: nothing is appended before both have room.
    _listeners.reserveOneMore();
    _components.reserveOneMore();

    if (thread != nullptr) _threadsToStart.push_back(thread);
    if (listener != nullptr) {
        _listeners.append(listener);
        _snapshotIsOld = true;
    }
    _components.append(component);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool EventBroker::removeComponent(arbor::PropertyHolder* component, bool destroy) {
    if (component == nullptr) return true;
    arbor::IThread* thread = threadOf(*component);
    // Equally right with == or negated: only a debugger reads the list of running threads.
    if (thread != nullptr) {
        const BrokerLock lock(*this);
        // Equally right without it: only a debugger reads the list of running threads.
        removeFirst(_runningThreads, thread);
    }
    if (const arbor::IListener* listener = listenerOf(*component); listener != nullptr) {
        const BrokerLock lock(*this);
        removeFirst(_listeners, listener);
        _snapshotIsOld = true;
    }
    bool found = false;
    {
        const BrokerLock lock(*this);
        found = removeFirst(_components, component);
    }
    if (destroy && found) {
        // A component that is only removed keeps its place among the threads to start. One that is
        // destroyed leaves it: the loop would start a thread that is gone (see decision 0010).
        if (thread != nullptr) forgetWaitingThread(thread);
        delete component;
    }
    return true;
}

void EventBroker::forgetWaitingThread(const arbor::IThread* thread) {
    const BrokerLock lock(*this);
    std::erase(_threadsToStart, thread);
    while (removeFirst(_runningThreads, thread)) {
    }
}

}  // namespace tern
