#pragma once

#include <functional>

// Makes every allocation of a scene fail in turn. A program that links allocation_faults.cpp gets
// its `operator new`, so tests of fault injection are programs of their own. The same source works
// natively under AddressSanitizer and in the Windows programs.
namespace fault_injection {

enum class Mode {
    Once,        // one allocation fails, those after it succeed again
    FromThenOn,  // all allocations after it fail too: memory stays exhausted
};

// The result of failing every allocation of a scene.
struct Outcome {
    long points = 0;    // allocations that were made to fail
    long leakedAt = 0;  // the first of them after which a block was not freed; 0: none
};

// Builds the objects of a scene and returns the function whose allocations fail. The function owns
// the objects that it captures, so they are destroyed with it.
using Scene = std::function<std::function<void()>()>;
// Asserts what must hold after the allocation `failed` (from 1; 0: none) was made to fail. The
// objects of the scene still exist, and allocations succeed again.
using Check = std::function<void(long failed)>;

// Runs the scene once without a failure, then with its first, second, ... allocation failing until
// a run makes no such allocation. Only allocations of the calling thread fail. std::bad_alloc may
// leave the function; a test must catch any other exception.
Outcome everyAllocation(Mode mode, const Scene& scene, const Check& check);

// The number of blocks of all threads that were allocated by `operator new` and not deleted yet.
long liveBlocks() noexcept;

}  // namespace fault_injection
