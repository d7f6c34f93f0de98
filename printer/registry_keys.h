#pragma once

// Where the registry holds what the monitor knows of its printer. The names are kept (see decision
// 0012): other programs, and earlier versions of this one, read and write them.
namespace registry_key {

inline constexpr wchar_t kMonitor[] = L"Software\\Corvane\\QVBL7400 SM";  // current user
inline constexpr wchar_t kCompanion[] = L"SOFTWARE\\Corvane\\Orrery\\";   // local machine

}  // namespace registry_key
