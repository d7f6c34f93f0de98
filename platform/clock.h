#pragma once

#include <cstdint>

namespace platform {

using UnixSeconds = std::int64_t;  // since 1970-01-01 00:00 UTC

[[nodiscard]] UnixSeconds now() noexcept;

}  // namespace platform
