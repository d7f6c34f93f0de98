#include "arbor/abstract_thread.h"

#include "arbor/i_listener.h"
#include "arbor/rundown.h"
#include "arbor/scoped_lock.h"
#include "platform/thread.h"

#include <atomic>
#include <cstddef>
#include <new>

namespace arbor {

namespace {

constexpr Guid kThreadMessageType{
    0x7B2FE4B8, 0x9AA6, 0x4FB4, {0x8E, 0x63, 0x1E, 0xB4, 0x21, 0xA9, 0x9F, 0xAA}};

}  // namespace

// The run-down protection of one object: it lets the thread in only while the object stands. Object
// and thread share it, so the thread can still ask when the object is gone.
struct AbstractThread::Use : Rundown {
    // Equally right with 1: no thread has that id.
    std::atomic<std::uint32_t> workerId{0};  // 0 until the worker runs
};

// What a new thread is given: its object, and the means to find out that the object is gone.
struct AbstractThread::Start {
    AbstractThread* thread;  // not owned
    std::shared_ptr<Use> use;
};

AbstractThread::ThreadMessage::ThreadMessage(ThreadCode code, IThread* thread)
    : Message(&type(), static_cast<std::uint32_t>(code), 0) {
    getProperties()->setPointer(kThreadKey, thread);
}

const Guid& AbstractThread::ThreadMessage::type() noexcept {
    return kThreadMessageType;
}

AbstractThread::AbstractThread() : _use(std::make_shared<Use>()) {}

AbstractThread::~AbstractThread() {
    endThreadUse();
    platform::closeThread(_thread);
}

void AbstractThread::endThreadUse() noexcept {
    // An observer may destroy the object on the thread itself. That thread is then inside, and to
    // wait for it would be to wait for ourselves for ever: allow its one visit.
    const bool onItself = _use->workerId == platform::currentThreadId();
    // Equally right with 2: only that one visit can still be inside.
    _use->close(onItself ? 1 : 0);
}

void AbstractThread::start() {
    notifyWithCode(ThreadCode::Starting);

    const ScopedLock lock(*this);
    if (_thread != nullptr) return;
    std::unique_ptr<Start> parameter(new (std::nothrow) Start{this, _use});
    if (parameter == nullptr) return;  // like a thread that the system cannot start
    const platform::NativeHandle thread =
        platform::startThread(&AbstractThread::threadProcedure, parameter.get(), _threadId);
    if (thread == nullptr) return;
    static_cast<void>(parameter.release());  // owned by the thread from now on
    _thread = thread;
}

std::uint32_t AbstractThread::threadProcedure(void* parameter) {
    const std::unique_ptr<Start> start(static_cast<Start*>(parameter));
    return runBody(*start->thread, *start->use);
}

std::uint32_t AbstractThread::runOnThisThread() {
    const std::shared_ptr<Use> use = _use;
    return runBody(*this, *use);
}

std::uint32_t AbstractThread::runBody(AbstractThread& thread, Use& use) {
    use.workerId = platform::currentThreadId();
    if (!use.enter()) return 0;

    std::uint32_t exitCode = 0;
    try {
        exitCode = thread.run();
        thread.notifyFinished();
    } catch (const ObjectGone&) {
        return exitCode;  // the body was refused when it came back: there is no visit to leave
    } catch (...) {
        // An exception, out of memory for instance, ends the thread here. It must not pass into the
        // system's code, which has called us.
    }
    use.leave();
    return exitCode;
}

bool AbstractThread::isFinished() {
    if (_thread == nullptr) return false;
    std::uint32_t exitCode = platform::kStillActive;  // a query that fails reads as not finished
    static_cast<void>(platform::threadExitCode(_thread, exitCode));
    return exitCode != platform::kStillActive;
}

std::uint32_t AbstractThread::wait(std::uint32_t timeoutMs) {
    return platform::waitForThread(_thread, timeoutMs);
}

void AbstractThread::addObserver(IListener* observer) {
    if (observer == nullptr) return;
    const ScopedLock lock(*this);
    _observers.append(observer);
}

void AbstractThread::removeObserver(IListener* observer) {
    if (observer == nullptr) return;
    const ScopedLock lock(*this);
    if (_observers.empty()) return;
    // The search ends at the last observer, so an unknown one takes that one out: nobody removes
    // what was never added.
    std::size_t index = 0;
    // Equally right with <=: erasing past the end removes the last one too.
    while (index + 1 < _observers.size() && _observers[index] != observer)
        ++index;
    _observers.erase(index);
}

void AbstractThread::notifyObservers(IMessage* message) {
    SmallVector<IListener*, 4> snapshot;
    {
        const ScopedLock lock(*this);
        for (IListener* observer : _observers)
            snapshot.append(observer);
    }
    // A copy of the list, and no lock: observers may add and remove observers or take other locks.
    for (IListener* observer : snapshot)
        observer->notify(message);
}

void AbstractThread::notifyWithCode(ThreadCode code) {
    ThreadMessage message(code, this);
    notifyObservers(&message);
}

void AbstractThread::requestStart() {
    notifyWithCode(ThreadCode::StartRequest);
}

void AbstractThread::notifyFinished() {
    notifyWithCode(ThreadCode::Finished);
}

AbstractThread::Use& AbstractThread::stepOutside() noexcept {
    Use& use = *_use;  // read first: after leave() the object may be gone
    use.leave();
    return use;
}

void AbstractThread::comeBack(Use& use) {
    if (!use.enter()) throw ObjectGone{};
}

}  // namespace arbor
