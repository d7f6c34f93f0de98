#include "platform/pipe.h"

#include "platform/simulated/world.h"
#include "platform/thread.h"

namespace platform {

using simulated::Call;
using simulated::world;

bool waitForPipe(const wchar_t* path) noexcept {
    return !world().faults.strikes(Call::PipeWait) && world().pipes.exists(path);
}

NativeHandle openPipeForReading(const wchar_t* path) noexcept {
    if (world().faults.strikes(Call::PipeOpenForReading)) return invalidHandle();
    return world().pipes.open(path);
}

NativeHandle openPipeForWriting(const wchar_t* path) noexcept {
    if (world().faults.strikes(Call::PipeOpenForWriting)) return invalidHandle();
    return world().pipes.open(path);
}

void setMessageReadMode(NativeHandle pipe) noexcept {
    if (!world().faults.strikes(Call::PipeMode)) world().pipes.setMessageMode(pipe);
}

PipeRead readPipe(NativeHandle pipe, void* to, std::uint32_t count) noexcept {
    constexpr std::uint32_t kPollMs = 1;
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::PipeRead, error)) return {true, 0, error};

    PipeRead result{};
    if (world().pipes.tryRead(pipe, to, count, result)) return result;
    world().pipes.countWaiting(+1);
    while (!world().pipes.tryRead(pipe, to, count, result))
        sleepFor(kPollMs);
    world().pipes.countWaiting(-1);
    return result;
}

bool writePipe(NativeHandle pipe, const void* from, std::uint32_t count) noexcept {
    return !world().faults.strikes(Call::PipeWrite) && world().pipes.write(pipe, from, count);
}

}  // namespace platform
