#pragma once

#include "platform/native_handle.h"

#include <cstdint>

// The life of the process between its entry and its exit: builds the framework, runs it until
// printing has ended and no alert is left, and tears it down. `instance` is the program's own
// module; `commandLine` has the settings of the status channel and may be null. Returns the exit
// code, 0 also when start-up fails: the print path can do nothing about that (kept: see decision
// 0012). Main thread.
std::uint32_t runMonitor(platform::NativeHandle instance, const char* commandLine) noexcept;
