#include <cstdio>
#include <cstdlib>
#include <initializer_list>

// The standard library calls this when one of its checks fails, for example when an index is out of
// range. It replaces the library's own version, which adds 22 KiB of formatting to the program for
// a message that a program without a console cannot show.
void std::__glibcxx_assert_fail(const char* file, int, const char* function,
                                const char* condition) noexcept {
    for (const char* const part : {file, ": ", function, ": ", condition, "\n"}) {
        std::fputs(part, stderr);
    }
    std::abort();
}
