#pragma once

#include "arbor/guid.h"
#include "arbor/i_listener.h"
#include "arbor/i_message.h"
#include "arbor/mutex.h"
#include "arbor/rundown.h"
#include "arbor/small_vector.h"
#include "arbor/thread_annotations.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>

namespace arbor {
class IPropertyHolder;
class IThread;
class PropertyHolder;
}  // namespace arbor

namespace tern {

class IInstanceManager;

using MessageReference = std::shared_ptr<arbor::IMessage>;

// Carries messages from generators to listeners, owns both, and runs the main loop. Generator
// threads may post, enqueue and stop; delivery, and with it every listener, runs on the main
// thread. No lock is held while a listener is called. A broker runs once: nothing restarts it.
class EventBroker : public arbor::IListener, public arbor::Mutex {
public:
    // `owner` is asked to pump window messages; not owned, outlives the broker. The queue needs
    // memory from the start: std::bad_alloc.
    explicit EventBroker(IInstanceManager* owner) : _owner(owner) {}

    // The order of the operations below is part of the design (kept: see decision 0012).

    // For what the threads of generators tell: the loop starts each thread that asks for it. Any
    // thread.
    bool notify(arbor::IMessage* message) override;
    // Destroys the components in the order in which they were added, then drops what is still
    // queued. A component may add or remove others from its destructor. It does not wait
    // for a thread that is blocked.
    ~EventBroker() override;
    // Hands the message to every listener in the order of registration; an exclusive one to the
    // first that takes it. Main thread.
    virtual void publish(arbor::IMessage* message) ARBOR_EXCLUDES(this);
    virtual IInstanceManager* getInstanceManager() { return _owner; }
    virtual bool isReady() { return true; }
    // Ends the loop after the message in hand. The arguments are not used. Any thread.
    virtual bool stop(const arbor::Guid* who, std::uint32_t flags);
    // The main loop: messages first; when there is none, new threads and window messages. The
    // result is always 0.
    virtual std::int32_t run() ARBOR_EXCLUDES(this);
    // Builds a message and enqueues it. `properties` only chooses a message with a bag of its own,
    // which starts empty. False when the message cannot be allocated or enqueued.
    virtual bool post(const arbor::Guid* type, std::uint32_t code, std::uint32_t flags,
                      arbor::PropertyHolder* properties);
    // False, and the message is dropped, when the queue has no memory or the broker is being
    // destroyed. Any thread.
    virtual bool enqueue(MessageReference message);
    virtual bool postExclusive(const arbor::Guid* type, std::uint32_t code, std::uint32_t flags,
                               arbor::PropertyHolder* properties);
    // On true the broker owns the component. False takes nothing: null, a component with neither
    // "thread" nor "listener" in its bag, or no memory. A thread is started when the loop is idle
    // next. Main thread.
    virtual bool addComponent(arbor::PropertyHolder* component);
    // Destroys the component only when asked to and when it was the broker's. Always true. Main
    // thread. Two things must not be destroyed: a listener that a delivery in progress has still to
    // call, and, by an observer of a thread's start, a generator whose own thread runs. That thread
    // may be waiting for the broker's lock, which is held then, and cannot leave its object.
    virtual bool removeComponent(arbor::PropertyHolder* component, bool destroy);

    // Whether no message is queued and nobody has asked for the end. Main thread.
    [[nodiscard]] bool isIdle() ARBOR_EXCLUDES(this);

private:
    using Listeners = arbor::SmallVector<arbor::IListener*, 8>;

    // Replaces what is in `copy`.
    void copyListeners(Listeners& copy) ARBOR_EXCLUDES(this);
    void deliver(arbor::IMessage* message, const Listeners& listeners);
    // Takes everything that is queued in hand. When there is nothing, starts the threads that wait
    // and answers false.
    [[nodiscard]] bool takeQueued() ARBOR_EXCLUDES(this);
    void startWaitingThreads() ARBOR_REQUIRES(this);
    void queueThread(arbor::IThread* thread) ARBOR_EXCLUDES(this);
    // Adds the component to all lists or, when memory runs out, to none.
    [[nodiscard]] bool enroll(arbor::PropertyHolder* component, arbor::IThread* thread,
                              arbor::IListener* listener) ARBOR_EXCLUDES(this);
    void forgetWaitingThread(const arbor::IThread* thread) ARBOR_EXCLUDES(this);

    IInstanceManager* _owner;  // not owned, outlives us
    arbor::SmallVector<arbor::IThread*, 2> _runningThreads ARBOR_GUARDED_BY(this);     // not owned
    Listeners _listeners ARBOR_GUARDED_BY(this);                                       // not owned
    arbor::SmallVector<arbor::PropertyHolder*, 4> _components ARBOR_GUARDED_BY(this);  // owned
    std::deque<MessageReference> _queue ARBOR_GUARDED_BY(this);
    std::deque<arbor::IThread*> _threadsToStart ARBOR_GUARDED_BY(this);  // not owned
    std::atomic<bool> _stopped{false};
    // The kernel's mutex is what a message costs. So the main thread takes whole queues and
    // delivers from what follows, which it alone uses.
    std::deque<MessageReference> _inHand;     // delivered before all of _queue
    Listeners _snapshot;                      // of _listeners, unless it is old; not owned
    std::atomic<bool> _snapshotIsOld{false};  // written under the lock
    int _deliveries = 0;                      // in progress, one inside the other
    arbor::Rundown _use;  // keeps generator threads out of a broker that is being destroyed
};

}  // namespace tern
