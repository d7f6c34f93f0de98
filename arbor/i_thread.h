#pragma once

#include "platform/native_handle.h"

#include <atomic>
#include <cstdint>

namespace arbor {

class IListener;

// A worker thread as its controller sees it.
class IThread {
public:
    IThread() = default;
    IThread(const IThread&) = delete;
    IThread& operator=(const IThread&) = delete;

    // The order of the operations below is part of the design, and so are the reserved ones, which
    // do nothing and answer true (kept: see decision 0012).

    // Tells the observers, on the calling thread; none of them may destroy the object then. Starts
    // the thread unless it was started before. std::bad_alloc, as addObserver().
    virtual void start() = 0;
    [[nodiscard]] virtual bool isFinished() = 0;
    // Waits for the end of the thread. The system's wait result: 0 when it has ended, 258 at the
    // time-out, 0xFFFFFFFF when there is no thread.
    virtual std::uint32_t wait(std::uint32_t timeoutMs) = 0;
    virtual void reserved4() = 0;
    virtual bool reserved5() = 0;
    virtual bool reserved6() = 0;
    virtual bool reserved7() = 0;
    // Where the native handle stands; owned by the thread object. Null until start() has returned,
    // so the thread itself may still find null there. Any thread may read it.
    virtual const std::atomic<platform::NativeHandle>* getHandle() = 0;
    // Observers are not owned and must be removed before they go. The same one may be added several
    // times; null is ignored. Any thread.
    virtual void addObserver(IListener* observer) = 0;
    virtual void removeObserver(IListener* observer) = 0;
    // 0 before the first start; the thread itself and its observers find its id. Any thread.
    virtual std::uint32_t getThreadId() = 0;

    virtual ~IThread() = default;
};

}  // namespace arbor
