#include "platform/shell.h"

#include "platform/shell_argument.h"
#include "platform/windows/lazy_library.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>
#include <new>

namespace platform {
namespace {

constexpr wchar_t kShellLibrary[] = L"shell32.dll";

LazyFunction<decltype(&::ShellExecuteW)> shellExecute(kShellLibrary, "ShellExecuteW");
LazyFunction<decltype(&::ShellExecuteExW)> shellExecuteWide(kShellLibrary, "ShellExecuteExW");
LazyFunction<decltype(&::ShellExecuteExA)> shellExecuteNarrow(kShellLibrary, "ShellExecuteExA");
LazyFunction<decltype(&::SHGetFolderPathA)> getFolderPath(kShellLibrary, "SHGetFolderPathA");

}  // namespace

// A try block of the whole function: making the argument takes memory, and we promise not to throw.
bool openAddress(const wchar_t* url) noexcept try {
    constexpr INT_PTR kLastShellError = 32;  // ShellExecute has succeeded if it returns more
    const auto open = shellExecute.get();
    if (open == nullptr) return false;
    const std::wstring argument = shellArgument(url);
    const HINSTANCE result =
        open(nullptr, L"open", argument.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kLastShellError;
} catch (const std::bad_alloc&) {
    return false;
}

bool startProgram(const wchar_t* path, std::uint32_t& error) noexcept {
    SHELLEXECUTEINFOW info = {};
    static_assert(sizeof info == 112);
    info.cbSize = sizeof info;
    info.lpFile = path;
    info.nShow = SW_SHOWNORMAL;
    const auto start = shellExecuteWide.get();
    if (start != nullptr && start(&info) != 0) return true;
    error = ::GetLastError();
    return false;
}

bool openDocument(const char* path) noexcept {
    SHELLEXECUTEINFOA info = {};
    info.cbSize = sizeof info;
    // Without this flag the shell opens a message box when no program is installed for the
    // document, and this call waits until the user closes it.
    info.fMask = SEE_MASK_FLAG_NO_UI;
    info.lpVerb = "open";
    info.lpFile = path;
    info.nShow = SW_SHOWNORMAL;
    const auto open = shellExecuteNarrow.get();
    return open != nullptr && open(&info) != 0;
}

bool folderPath(Folder folder, std::string& path) {
    const int id = folder == Folder::ProgramFiles ? CSIDL_PROGRAM_FILES : CSIDL_COMMON_APPDATA;
    const auto look = getFolderPath.get();
    char found[MAX_PATH];
    if (look == nullptr || look(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, found) != S_OK) {
        return false;
    }
    path = found;
    return true;
}

}  // namespace platform
