// The run-time library of -fsanitize=undefined, which mingw-w64 does not have. It prints where the
// undefined behaviour is and ends the process. The compiler calls these functions by name, and the
// first argument of each begins with the place in the source.
#include <windows.h>
#include <cstdio>

namespace {

struct Place {
    const char* file;
    unsigned line;
    unsigned column;
};

[[noreturn]] void report(const char* what, const Place* at) {
    constexpr UINT kExitCode = 88;
    char text[400];
    const int length = std::snprintf(text, sizeof text, "%s:%u:%u: undefined behaviour: %s\n",
                                     at->file, at->line, at->column, what);
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(length), &written,
                nullptr);
    ::TerminateProcess(::GetCurrentProcess(), kExitCode);
    ::ExitProcess(kExitCode);
}

}  // namespace

#define HANDLER(name)                                                \
    extern "C" void __ubsan_handle_##name(const Place* at);          \
    extern "C" void __ubsan_handle_##name(const Place* at) {         \
        report(#name, at);                                           \
    }                                                                \
    extern "C" void __ubsan_handle_##name##_abort(const Place* at);  \
    extern "C" void __ubsan_handle_##name##_abort(const Place* at) { \
        report(#name, at);                                           \
    }                                                                \
    static_assert(true)

HANDLER(add_overflow);
HANDLER(sub_overflow);
HANDLER(mul_overflow);
HANDLER(negate_overflow);
HANDLER(divrem_overflow);
HANDLER(pointer_overflow);
HANDLER(shift_out_of_bounds);
HANDLER(out_of_bounds);
HANDLER(type_mismatch_v1);
HANDLER(alignment_assumption);
HANDLER(load_invalid_value);
HANDLER(float_cast_overflow);
HANDLER(vla_bound_not_positive);
HANDLER(nonnull_arg);
HANDLER(nonnull_return_v1);
HANDLER(invalid_builtin);
HANDLER(builtin_unreachable);
HANDLER(missing_return);
