#include <cstdio>
#include <cstdlib>
#include <exception>
#include <initializer_list>

// What the standard library calls before it ends the process. Its own versions format a message for
// which they need 70 KiB of code, and a program without a console cannot show the message.

// A check failed, for example an index is out of range.
void std::__glibcxx_assert_fail(const char* file, int, const char* function,
                                const char* condition) noexcept {
    for (const char* const part : {file, ": ", function, ": ", condition, "\n"}) {
        std::fputs(part, stderr);
    }
    std::abort();
}

// An exception found no handler.
// NOLINTNEXTLINE(clang-diagnostic-missing-noreturn): <exception> declares it without the attribute
void __gnu_cxx::__verbose_terminate_handler() {
    std::fputs("an exception found no handler\n", stderr);
    std::abort();  // Equally right without it: the library aborts when this returns.
}
