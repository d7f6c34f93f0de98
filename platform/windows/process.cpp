#include "platform/process.h"

#include <windows.h>

namespace platform {

void endProcess(std::uint32_t exitCode) {
    // TerminateProcess, because ExitProcess stops the other threads and then runs the clean-up of
    // the libraries. If a stopped thread held a lock that the clean-up needs, it never ends.
    ::TerminateProcess(::GetCurrentProcess(), exitCode);
    ::ExitProcess(exitCode);  // never reached: tells the compiler that this function never returns
}

}  // namespace platform
