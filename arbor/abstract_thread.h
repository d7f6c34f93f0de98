#pragma once

#include "arbor/guid.h"
#include "arbor/i_message.h"
#include "arbor/i_thread.h"
#include "arbor/message.h"
#include "arbor/mutex.h"
#include "arbor/small_vector.h"
#include "arbor/thread_annotations.h"
#include "platform/native_handle.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace arbor {

// A ThreadMessage carries its IThread under this key, and so does a component that has a thread
// (kept: see decision 0012).
inline constexpr wchar_t kThreadKey[] = L"thread";

// Codes of a ThreadMessage.
enum class ThreadCode : std::uint32_t { StartRequest = 1, Starting = 2, Finished = 3 };

// One operating-system thread that runs a body, once in the life of the object, and tells observers
// about it. Destruction does not stop the thread, and it does not wait for a thread that is outside
// of the object, which may hang in a read for ever. It does wait while the body uses the object:
// without that, the body would go on in freed memory. So a body runs all that blocks by outside();
// one that never does so is waited for to its end.
class AbstractThread : public IThread, public Mutex {
public:
    // Tells an observer about a thread. It lives on the sender's stack: observers must not keep it.
    class ThreadMessage : public Message {
    public:
        ThreadMessage(ThreadCode code, IThread* thread);
        ~ThreadMessage() override = default;

        // Type of all thread messages.
        [[nodiscard]] static const Guid& type() noexcept;
    };

    AbstractThread();
    ~AbstractThread() override;

    // A thread that the system cannot start is not reported; a later start tries again.
    void start() override;
    // False before the first start, and when the system does not tell.
    [[nodiscard]] bool isFinished() override;
    std::uint32_t wait(std::uint32_t timeoutMs) override;
    void reserved4() override {}
    bool reserved5() override { return true; }
    bool reserved6() override { return true; }
    bool reserved7() override { return true; }
    const std::atomic<platform::NativeHandle>* getHandle() override { return &_thread; }
    void addObserver(IListener* observer) override;
    // Removes the last observer when this one is not in the list: remove only what you added.
    void removeObserver(IListener* observer) override;
    std::uint32_t getThreadId() override { return _threadId; }

    // The thread body; its result is the exit code of the thread. It uses the object, so the
    // destructor waits for it; all that blocks must be run by outside().
    virtual std::uint32_t run() = 0;
    // Calls a snapshot of the observers, on this thread, without the lock.
    virtual void notifyObservers(IMessage* message) ARBOR_EXCLUDES(this);
    virtual void requestStart();
    virtual void notifyFinished();

protected:
    struct Use;

    // Thrown into a thread body that comes back to an object which is gone. The body must let it
    // pass and touch nothing of the object.
    struct ObjectGone {};

    // Runs `work`, which may block, while the thread does not use its object: the object may be
    // destroyed meanwhile, so `work` touches nothing of it. Throws ObjectGone when it was, also
    // instead of what `work` threw. Only from inside the body.
    template <typename Work>
    void outside(const Work& work) {
        Use& use = stepOutside();
        try {
            work();
        } catch (...) {
            comeBack(use);
            throw;
        }
        comeBack(use);
    }

    // Waits until the thread is not using the object, and keeps it out from then on. Every concrete
    // class calls this first in its destructor: the body uses the members of that class, which are
    // gone before the destructor of this class runs.
    void endThreadUse() noexcept;

    // Does on the calling thread what the thread would do, for a caller that has a thread to spare.
    // Never while the object's own thread runs. Returns the result of the body.
    std::uint32_t runOnThisThread();

private:
    struct Start;

    // The two halves of outside(). The result outlives the object: runBody()'s caller shares it.
    [[nodiscard]] Use& stepOutside() noexcept;
    static void comeBack(Use& use);
    static std::uint32_t threadProcedure(void* parameter);
    // `thread` may be gone: it is touched only when `use` lets us in. The caller owns a share of
    // `use` until this returns.
    static std::uint32_t runBody(AbstractThread& thread, Use& use);
    void notifyWithCode(ThreadCode code);

    // Written once, under the mutex. Atomic, because readers take no lock: the thread itself may
    // ask for its id while start() has not returned yet.
    std::atomic<std::uint32_t> _threadId{0};
    std::atomic<platform::NativeHandle> _thread{nullptr};          // owned
    SmallVector<IListener*, 4> _observers ARBOR_GUARDED_BY(this);  // not owned
    std::shared_ptr<Use> _use;                                     // shared with the thread
};

}  // namespace arbor
