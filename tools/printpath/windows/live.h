#pragma once

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/options.h"

namespace printpath {

// Plays the steps that somebody types, or that come through a pipe, until "quit" or the end of the
// input. What is wrong with a step is said and ends nothing.
Outcome playLive(const Options& options);

}  // namespace printpath
