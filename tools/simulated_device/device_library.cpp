// A replacement of rtqewsi.dll with a folder of files in place of the printer. The entry points
// that the monitor looks up but never calls always report a failure.
#include "tools/printpath/windows/wide_text.h"
#include "tools/simulated_device/device_folder.h"

#include <windows.h>

#include <string>

// Frees the 72 KiB that the C++ library keeps for exceptions when memory runs out. The library has
// this function for leak checkers, without a declaration in a header.
namespace __gnu_cxx {
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the library's own name
void __freeres() noexcept;
}  // namespace __gnu_cxx

namespace {

constexpr DWORD kOfflineError = ERROR_NOT_READY;

std::string narrow(const wchar_t* text) {
    return text == nullptr ? "(null)" : printpath::utf8FromWide(text);
}

// Every device that is opened gets another number, which is never 0.
HANDLE nextDevice() {
    static LONG last = 0x7400;
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(::InterlockedIncrement(&last)));
}

HANDLE openDevice(const std::string& port) {
    const DeviceFolder folder;
    folder.answerSlowly();
    if (folder.offline()) {
        folder.log("offline " + port);
        ::SetLastError(kOfflineError);
        return nullptr;
    }
    folder.log("open " + port);
    return nextDevice();
}

}  // namespace

extern "C" {

// The monitor loads and frees this library for every question. The C++ library that is linked into
// it allocates memory at each load, which would be lost.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) __gnu_cxx::__freeres();
    return TRUE;
}

__declspec(dllexport) HANDLE WINAPI OpenEWSPort_W(const wchar_t* port) {
    return openDevice(narrow(port));
}

__declspec(dllexport) HANDLE WINAPI OpenEWSPort_A(const char* port) {
    return openDevice(port == nullptr ? "(null)" : port);
}

__declspec(dllexport) HANDLE WINAPI OpenEWS_W(const wchar_t*) {
    return nullptr;
}
__declspec(dllexport) HANDLE WINAPI OpenEWS_A(const char*) {
    return nullptr;
}

__declspec(dllexport) BOOL WINAPI CloseEWS(HANDLE) {
    DeviceFolder().log("close");
    return TRUE;
}

__declspec(dllexport) DWORD WINAPI EWSLastError() {
    return ::GetLastError();
}

__declspec(dllexport) BOOL WINAPI WriteEWS(HANDLE, const void*, DWORD, DWORD*) {
    return FALSE;
}
__declspec(dllexport) BOOL WINAPI ReadEWS(HANDLE, void*, DWORD, DWORD*) {
    return FALSE;
}
__declspec(dllexport) BOOL WINAPI WriteReadEWS(HANDLE, const void*, DWORD, void*, DWORD, DWORD*) {
    return FALSE;
}

__declspec(dllexport) BOOL WINAPI GetPage(HANDLE device, const char* path, void* reserved,
                                          char* buffer, DWORD size, DWORD* received) {
    const DeviceFolder folder;
    const std::string name = path == nullptr ? "(null)" : path;
    folder.answerSlowly();
    std::string page;
    if (device == nullptr || reserved != nullptr || folder.offline() ||
        !folder.readPage(name, page)) {
        folder.log("no-page " + name);
        return FALSE;
    }
    // A page that does not fit is cut. The caller notices it because the whole length is reported.
    page.copy(buffer, size);
    *received = folder.claimedLength(page.size());
    folder.log((page.size() > size ? "page-too-large " : "page ") + name);
    return TRUE;
}

__declspec(dllexport) BOOL WINAPI PushLedmButtonW(HANDLE device, const wchar_t* button) {
    const DeviceFolder folder;
    folder.answerSlowly();
    const std::string name = narrow(button);
    if (device == nullptr || folder.offline() || (name != "go" && name != "cancel")) return FALSE;
    folder.log("button " + name);
    return TRUE;
}

}  // extern "C"
