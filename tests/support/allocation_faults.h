#pragma once

#include <functional>

// Makes every allocation of a scene fail in turn. A program that links allocation_faults.cpp gets
// its `operator new`, so fault injection lives in test programs of its own; the same source works
// natively under AddressSanitizer and in the Windows programs.
namespace fault_injection {

enum class Mode {
    Once,        // one allocation fails, those after it succeed again
    FromThenOn,  // and so do all after it: memory stays exhausted
};

// The result of failing every allocation of a scene.
struct Outcome {
    long points = 0;    // allocations that were made to fail
    long leakedAt = 0;  // the first of them after which memory was missing; 0: none
};

// Sets a scene and returns the part whose allocations fail; what it captures is the scene, gone
// with it.
using Scene = std::function<std::function<void()>()>;
// Asserts what must hold after the allocation `failed` (from 1; 0: none) was made to fail. The
// scene still stands, and memory is back.
using Check = std::function<void(long failed)>;

// Plays the scene once undisturbed, then with its first, second, ... allocation failing until a
// round passes in which none did. Only allocations of the calling thread fail. std::bad_alloc may
// leave that part; any other exception is the test's to catch.
Outcome everyAllocation(Mode mode, const Scene& scene, const Check& check);

// Blocks that `operator new` gave and nobody has given back, of all threads.
long liveBlocks() noexcept;

}  // namespace fault_injection
