#include "platform/clock.h"

#include <windows.h>

namespace platform {

UnixSeconds now() noexcept {
    constexpr std::int64_t kTicksPerSecond = 10'000'000;     // a FILETIME counts units of 100 ns
    constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;  // a FILETIME counts from 1601
    constexpr int kHighShift = 32;

    FILETIME time;
    ::GetSystemTimeAsFileTime(&time);
    const std::int64_t ticks =
        (static_cast<std::int64_t>(time.dwHighDateTime) << kHighShift) | time.dwLowDateTime;
    return ticks / kTicksPerSecond - kSecondsTo1970;
}

std::uint64_t uptimeMs() noexcept {
    return ::GetTickCount64();
}

}  // namespace platform
