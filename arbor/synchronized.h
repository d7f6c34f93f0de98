#pragma once

#include "platform/lock.h"

namespace arbor {

// A base that gives its object a lock inside the process. Re-entrant.
class Synchronized {
public:
    void lock() const noexcept { _section.lock(); }
    void unlock() const noexcept { _section.unlock(); }

protected:
    Synchronized() noexcept = default;
    ~Synchronized() = default;

private:
    mutable platform::CriticalSection _section;
};

}  // namespace arbor
