#pragma once

#include <cstdint>

namespace platform {

using UnixSeconds = std::int64_t;  // since 1970-01-01 00:00 UTC

// The system's clock, which its user may set back. Any thread may call.
[[nodiscard]] UnixSeconds now() noexcept;

// Milliseconds since some moment before the process began, in steps of up to 16. Never goes back.
// Any thread may call.
[[nodiscard]] std::uint64_t uptimeMs() noexcept;

}  // namespace platform
