// Tells the sanitizer of the stacks that Wine makes for its threads. It knows only those of the C
// library, and without the right one it cannot clear what frames leave behind that an exception
// skips: a later frame at the same place would be reported for it.
#include <sanitizer/common_interface_defs.h>
#include <windows.h>
#include <cstddef>
#include <cstdlib>
#include <memory>

#undef CreateThread

// constructors.ld keeps the constructors of static objects between these two.
using Constructor = void (*)();
extern "C" __attribute__((visibility("hidden"))) const Constructor firstConstructor[];
extern "C" __attribute__((visibility("hidden"))) const Constructor endOfConstructors[];

int googleTestMain(int argumentCount, char** arguments);
extern "C" HANDLE WINAPI CreateThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*,
                                      DWORD, DWORD*);

namespace {

void announceStack() {
    MEMORY_BASIC_INFORMATION stack = {};
    ::VirtualQuery(&stack, &stack, sizeof stack);  // it lies there itself
    const auto* const low = static_cast<const char*>(stack.AllocationBase);
    const auto* const high =
        static_cast<const char*>(reinterpret_cast<NT_TIB*>(::NtCurrentTeb())->StackBase);
    __sanitizer_start_switch_fiber(nullptr, low, static_cast<std::size_t>(high - low));
    __sanitizer_finish_switch_fiber(nullptr, nullptr, nullptr);
}

struct Start {
    LPTHREAD_START_ROUTINE procedure;
    void* parameter;
};

DWORD WINAPI runThread(void* parameter) {
    announceStack();
    const Start start = *std::unique_ptr<const Start>(static_cast<const Start*>(parameter));
    return start.procedure(start.parameter);
}

}  // namespace

extern "C" HANDLE WINAPI createThreadWithKnownStack(SECURITY_ATTRIBUTES* security,
                                                    SIZE_T stackBytes,
                                                    LPTHREAD_START_ROUTINE procedure,
                                                    void* parameter, DWORD flags, DWORD* id) {
    auto start = std::make_unique<Start>(Start{procedure, parameter});
    const HANDLE thread = ::CreateThread(security, stackBytes, &runThread, start.get(), flags, id);
    if (thread != nullptr) static_cast<void>(start.release());  // the thread's now
    return thread;
}

int main(int argumentCount, char** arguments) {
    announceStack();
    ::unsetenv("LD_PRELOAD");  // programs that a test starts are not of this kind
    for (const Constructor* construct = firstConstructor; construct != endOfConstructors;
         ++construct)
        (*construct)();
    return googleTestMain(argumentCount, arguments);
}
