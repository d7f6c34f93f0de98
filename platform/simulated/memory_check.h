#pragma once

#include <cstddef>

#if defined(__has_include)
#if __has_include(<valgrind/memcheck.h>)
#include <valgrind/memcheck.h>
#endif
#endif

namespace platform::simulated {

// Under Valgrind: reports uninitialised bytes that the product is about to write to a pipe or to
// the registry. Elsewhere it does nothing.
inline void checkDefined([[maybe_unused]] const void* from, [[maybe_unused]] std::size_t bytes) {
#if defined(VALGRIND_CHECK_MEM_IS_DEFINED)
    static_cast<void>(VALGRIND_CHECK_MEM_IS_DEFINED(from, bytes));
#endif
}

}  // namespace platform::simulated
