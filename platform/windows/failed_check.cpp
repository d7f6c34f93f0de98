#include <cstdio>
#include <cstdlib>
#include <initializer_list>

// What the standard library calls when one of its own checks fails, an index out of range for one.
// Its own version carries 22 KiB of formatting along, for a message that a program without a
// console has nowhere to show.
void std::__glibcxx_assert_fail(const char* file, int, const char* function,
                                const char* condition) noexcept {
    for (const char* const part : {file, ": ", function, ": ", condition, "\n"}) {
        std::fputs(part, stderr);
    }
    std::abort();
}
