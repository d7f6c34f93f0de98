// recorder.exe [KIND WHAT]: replaces the browser and the companion program in tests. It appends the
// line "KIND WHAT", or "started" if there are no arguments, in UTF-8 to the file that the
// environment variable QVSM_RECORDER_FILE names.
#include "tools/printpath/windows/wide_text.h"

#include <windows.h>

#include <shellapi.h>

#include <string>

namespace {

constexpr DWORD kPathUnits = 32768;

bool appendLine(const wchar_t* path, const std::string& line) {
    const HANDLE file = ::CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const BOOL ok =
        ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    ::CloseHandle(file);
    return ok && written == line.size();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    int count = 0;
    wchar_t** const arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (arguments == nullptr) return 1;
    std::wstring line = count > 1 ? arguments[1] : L"started";
    for (int index = 2; index < count; ++index)
        line.append(L" ").append(arguments[index]);
    line += L'\n';
    ::LocalFree(arguments);
    std::wstring path(kPathUnits, L'\0');
    path.resize(::GetEnvironmentVariableW(L"QVSM_RECORDER_FILE", path.data(), kPathUnits));
    return !path.empty() && appendLine(path.c_str(), printpath::utf8FromWide(line)) ? 0 : 1;
}
