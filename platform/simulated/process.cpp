#include "platform/process.h"

#include "platform/simulated/process_ended.h"

namespace platform {

void endProcess(std::uint32_t exitCode) {
    throw ProcessEnded{exitCode};
}

}  // namespace platform
