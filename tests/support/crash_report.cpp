// Linked into every Windows test program. A crash prints the return addresses and ends the process
// with exit code 99. Without this, a crashing program may end with exit code 0 under Wine.
// x86_64-w64-mingw32-addr2line -e program.exe -fCip ADDRESS... names the lines.
#include <windows.h>
#include <cstddef>
#include <cstdio>

namespace {

constexpr int kDepthLimit = 24;
constexpr UINT kExitCode = 99;

// Replaces `context` by the context of the function's caller.
void stepOut(CONTEXT& context) {
    DWORD64 base = 0;
    if (RUNTIME_FUNCTION* function = ::RtlLookupFunctionEntry(context.Rip, &base, nullptr)) {
        void* data = nullptr;
        DWORD64 frame = 0;
        ::RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &data, &frame,
                           nullptr);
        return;
    }
    context.Rip = *reinterpret_cast<const DWORD64*>(context.Rsp);  // a leaf function has no frame
    context.Rsp += sizeof(DWORD64);
}

LONG WINAPI onCrash(EXCEPTION_POINTERS* crash) {
    char text[1200];
    CONTEXT context = *crash->ContextRecord;
    int length = std::snprintf(text, sizeof text,
                               "crash %08lx, addresses:", crash->ExceptionRecord->ExceptionCode);
    for (int depth = 0; depth < kDepthLimit && context.Rip != 0; ++depth) {
        length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                                " %llx", context.Rip);
        stepOut(context);
    }
    text[length++] = '\n';
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(length), &written,
                nullptr);
    ::TerminateProcess(::GetCurrentProcess(), kExitCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

[[maybe_unused]] const bool isInstalled = [] {
    ::SetUnhandledExceptionFilter(&onCrash);
    return true;
}();

}  // namespace
