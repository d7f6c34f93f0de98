// Never part of a program: the compiler must refuse to compile it.
#include "arbor/mutex.h"
#include "arbor/scoped_lock.h"

namespace {

class Counter : public arbor::Mutex {
public:
    void countWithoutTheLock() { ++_count; }
    void tellWithTheLock() {
        const arbor::ScopedLock lock(*this);
        tell();
    }

private:
    void tell() ARBOR_EXCLUDES(this) {}

    int _count ARBOR_GUARDED_BY(this) = 0;
};

}  // namespace

int main() {
    Counter counter;
    counter.countWithoutTheLock();
    counter.tellWithTheLock();
    return 0;
}
