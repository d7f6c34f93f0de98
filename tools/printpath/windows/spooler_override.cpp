#include "tools/printpath/windows/spooler_override.h"

#include "tools/printpath/windows/registry_values.h"
#include "tools/printpath/windows/text_file.h"

#include <windows.h>

namespace printpath {

namespace {

constexpr wchar_t kLibrary[] = L"winspool.drv";

}  // namespace

bool isPlacedInSystemFolder(const std::filesystem::path& file) {
    wchar_t folder[MAX_PATH + 1];
    const std::wstring system(folder, ::GetSystemDirectoryW(folder, MAX_PATH));
    const std::string placed = readWholeFile(std::filesystem::path(system) / kLibrary);
    return !placed.empty() && placed == readWholeFile(file);
}

// The registry and not WINEDLLOVERRIDES: the variable would hold for this program as well, which
// needs Wine's own spooler to add printers.
SpoolerOverride::SpoolerOverride(const std::wstring& programName)
    : _key(L"Software\\Wine\\AppDefaults\\" + programName + L"\\DllOverrides") {
    writeText(HKEY_CURRENT_USER, _key, kLibrary, L"native,builtin");
}

SpoolerOverride::~SpoolerOverride() {
    ::RegDeleteKeyValueW(HKEY_CURRENT_USER, _key.c_str(), kLibrary);
}

}  // namespace printpath
