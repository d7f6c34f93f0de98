#include "platform/process.h"

#include <windows.h>

namespace platform {

void endProcess(std::uint32_t exitCode) {
    // Not ExitProcess: it stops the other threads wherever they stand and then runs the libraries'
    // clean-up, which waits for ever for a lock that such a thread held.
    ::TerminateProcess(::GetCurrentProcess(), exitCode);
    ::ExitProcess(exitCode);  // never reached; tells the compiler that nothing returns
}

}  // namespace platform
