#pragma once

#include "arbor/thread_annotations.h"
#include "platform/lock.h"

namespace arbor {

// A base that gives its object a critical section (kept: see decision 0012). It is re-entrant, and
// costs no system call while nobody else wants it.
class ARBOR_LOCK Synchronized {
public:
    void lock() const noexcept ARBOR_ACQUIRES() { _section.lock(); }
    void unlock() const noexcept ARBOR_RELEASES() { _section.unlock(); }

protected:
    Synchronized() noexcept = default;
    ~Synchronized() = default;

private:
    mutable platform::CriticalSection _section;
};

}  // namespace arbor
