#pragma once

namespace platform {

// The key below the local machine where an administrator sets what holds for all users (kept: see
// decision 0012).
inline constexpr wchar_t kMachineSettings[] = L"SOFTWARE\\Corvane\\QVBL7400 SM";

}  // namespace platform
