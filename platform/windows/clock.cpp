#include "platform/clock.h"

#include <windows.h>

namespace platform {

UnixSeconds now() noexcept {
    constexpr std::int64_t kTicksPerSecond = 10'000'000;     // of a FILETIME: 100 ns each
    constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;  // since 1601, where FILETIME begins
    constexpr int kHighShift = 32;

    FILETIME time;
    ::GetSystemTimeAsFileTime(&time);
    const std::int64_t ticks =
        (static_cast<std::int64_t>(time.dwHighDateTime) << kHighShift) | time.dwLowDateTime;
    return ticks / kTicksPerSecond - kSecondsTo1970;
}

}  // namespace platform
