#pragma once

#include <cstdint>

namespace platform {

// Thrown where the process would end. Not of the standard family: what catches std::exception
// cannot mistake it for an error of its own.
struct ProcessEnded {
    std::uint32_t code;
};

}  // namespace platform
