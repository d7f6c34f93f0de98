#include "tests/support/clean_platform.h"

#if defined(_WIN32) && !defined(BEAMLINE_SIMULATED_PLATFORM)
#include <windows.h>

void cleanPlatform() {
    constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";
    ::RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey);
}
#else
#include "platform/simulated/world.h"

void cleanPlatform() {
    platform::simulated::world().reset();
}
#endif
