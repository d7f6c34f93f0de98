#pragma once

#include <cstdint>

namespace platform {

// Thrown where the process would end. It is not derived from std::exception, so that the product's
// handlers for its own errors do not catch it.
struct ProcessEnded {
    std::uint32_t code;
};

}  // namespace platform
