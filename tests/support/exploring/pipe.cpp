#include "platform/pipe.h"

#include "platform/simulated/world.h"
#include "tests/support/exploring/scheduler.h"

namespace platform {

using exploring::Scheduler;
using simulated::world;

bool waitForPipe(const wchar_t* path) noexcept {
    return world().pipes.exists(path);
}

NativeHandle openPipeForReading(const wchar_t* path) noexcept {
    return world().pipes.open(path);
}

NativeHandle openPipeForWriting(const wchar_t* path) noexcept {
    return world().pipes.open(path);
}

void setMessageReadMode(NativeHandle pipe) noexcept {
    world().pipes.setMessageMode(pipe);
}

PipeRead readPipe(NativeHandle pipe, void* to, std::uint32_t count) noexcept {
    Scheduler& scheduler = Scheduler::instance();
    scheduler.point();
    for (PipeRead result{};;) {
        if (world().pipes.tryRead(pipe, to, count, result)) return result;
        if (scheduler.isEnding()) return {true, 0, kBrokenPipe};
        scheduler.waitUntil("bytes in a pipe", pipe, [pipe, &scheduler] {
            return scheduler.isEnding() || world().pipes.canRead(pipe);
        });
    }
}

bool writePipe(NativeHandle pipe, const void* from, std::uint32_t count) noexcept {
    Scheduler::instance().point();
    return world().pipes.write(pipe, from, count);
}

}  // namespace platform
