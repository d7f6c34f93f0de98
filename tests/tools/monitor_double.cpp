// Replaces the monitor in tests of printpath. It connects to the pipe, shows a dialog for a status,
// and crashes, hangs or leaks when a status asks for it.
#include "ui/resource_ids.h"

#include <windows.h>

#include <shellapi.h>

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>

namespace {

constexpr std::size_t kHeaderBytes = 20;
constexpr DWORD kIdleMs = 20;
constexpr DWORD kForeverMs = INFINITE;
constexpr int kSnoozes = 9;
constexpr std::uint32_t kStatusClass = 2;
constexpr std::uint32_t kStatusSubcode = 3;
constexpr std::uint32_t kJobClass = 0;
constexpr std::uint32_t kDocumentEnd = 4;

// Each of these status codes makes this program do one thing.
constexpr std::uint32_t kShow = 41100;
constexpr std::uint32_t kCrash = 900001;
constexpr std::uint32_t kStopReading = 900002;
constexpr std::uint32_t kEndWithSeven = 900003;
constexpr std::uint32_t kNeverEnd = 900004;
constexpr std::uint32_t kOpenLink = 900005;
constexpr std::uint32_t kAskDevice = 900006;
constexpr std::uint32_t kLoseAHandle = 900007;
constexpr int kOddExitCode = 7;
constexpr DWORD kPageBytes = 65536;

bool neverEnd = false;
bool finished = false;

INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            ::SetDlgItemTextW(dialog, IDC_ALERT_HEADLINE, L"The printer is out of paper.");
            for (int i = 0; i < kSnoozes; ++i)
                ::SendDlgItemMessageW(dialog, IDC_SNOOZE_CHOICE, CB_ADDSTRING, 0,
                                      reinterpret_cast<LPARAM>(L"entry"));
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_ALERT_OK) ::DestroyWindow(dialog);
            if (LOWORD(wParam) == IDC_SNOOZE_CHOICE && HIWORD(wParam) == CBN_SELCHANGE)
                ::ShowWindow(::GetDlgItem(dialog, IDC_ALERT_DETAIL), SW_SHOW);
            if (LOWORD(wParam) == IDC_ALERT_HELP)
                ::MessageBoxW(dialog, L"Load paper.", L"Double", MB_OK);
            return TRUE;
        case WM_CHAR:
        case WM_CLOSE:
            ::DestroyWindow(dialog);
            return TRUE;
        default:
            return FALSE;
    }
}

void showDialog() {
    const HWND dialog = ::CreateDialogParamW(::GetModuleHandleW(nullptr),
                                             MAKEINTRESOURCEW(IDD_ALERT), nullptr, procedure, 0);
    ::SetWindowPos(dialog, nullptr, 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ::ShowWindow(dialog, SW_SHOW);
}

template <typename Function>
Function entry(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

// Fetches a page and, if there is one, presses the Go button.
void askDevice() {
    const HMODULE library = ::LoadLibraryW(L"rtqewsi.dll");
    if (library == nullptr) return;
    const auto open = entry<HANDLE(WINAPI*)(const wchar_t*)>(library, "OpenEWSPort_W");
    const auto close = entry<BOOL(WINAPI*)(HANDLE)>(library, "CloseEWS");
    const auto page =
        entry<BOOL(WINAPI*)(HANDLE, const char*, void*, char*, DWORD, DWORD*)>(library, "GetPage");
    const auto push = entry<BOOL(WINAPI*)(HANDLE, const wchar_t*)>(library, "PushLedmButtonW");
    const HANDLE device = open(L"USB001");
    if (device == nullptr) return;
    std::string buffer(kPageBytes, '\0');
    DWORD received = 0;
    if (page(device, "/DevMgmt/ProductUsageDyn.xml", nullptr, buffer.data(), kPageBytes, &received))
        push(device, buffer.find(">17<") == std::string::npos ? L"go" : L"cancel");
    close(device);
}

void onStatus(std::uint32_t status) {
    if (status == kShow) showDialog();
    if (status == kCrash)
        ::RaiseException(static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION), 0, 0, nullptr);
    if (status == kStopReading) ::Sleep(kForeverMs);
    if (status == kEndWithSeven) ::ExitProcess(kOddExitCode);
    if (status == kOpenLink)
        ::ShellExecuteW(nullptr, L"open", L"https://www.corvane.example/go/recycle?a=1&b=%20x",
                        nullptr, nullptr, SW_SHOWNORMAL);
    if (status == kAskDevice) askDevice();
    if (status == kLoseAHandle) ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (status == kNeverEnd) neverEnd = true;
}

class Reader {
public:
    explicit Reader(HANDLE pipe) : _pipe(pipe) {}

    // Takes what is there; false when the pipe has gone.
    bool poll() {
        DWORD waiting = 0;
        if (!::PeekNamedPipe(_pipe, nullptr, 0, nullptr, &waiting, nullptr)) return false;
        if (waiting == 0) return true;
        std::string chunk(waiting, '\0');
        DWORD count = 0;
        ::ReadFile(_pipe, chunk.data(), waiting, &count, nullptr);
        _bytes.append(chunk, 0, count);
        while (takeRecord()) {
        }
        return true;
    }

private:
    std::uint32_t numberAt(std::size_t at) const {
        std::uint32_t number = 0;
        std::memcpy(&number, _bytes.data() + at, sizeof number);
        return number;
    }

    bool takeRecord() {
        if (_bytes.size() < kHeaderBytes) return false;
        const std::size_t length = numberAt(16);
        if (_bytes.size() < kHeaderBytes + length) return false;
        const std::uint32_t recordClass = numberAt(4);
        const std::uint32_t subcode = numberAt(8);
        const std::uint32_t first = length >= 4 ? numberAt(kHeaderBytes) : 0;
        _bytes.erase(0, kHeaderBytes + length);
        if (recordClass == kJobClass && subcode == kDocumentEnd) finished = !neverEnd;
        if (recordClass == kStatusClass && subcode == kStatusSubcode) onStatus(first);
        return true;
    }

    HANDLE _pipe;
    std::string _bytes;
};

void pump() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

void traceThatItRuns() {
    wchar_t file[MAX_PATH] = {};
    if (::GetEnvironmentVariableW(L"QVSM_TRACE", file, MAX_PATH) == 0) return;
    const HANDLE trace = ::CreateFileW(file, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    constexpr char kLine[] = "the double runs\n";
    DWORD written = 0;
    ::WriteFile(trace, kLine, sizeof kLine - 1, &written, nullptr);
    ::CloseHandle(trace);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t* commandLine, int) {
    traceThatItRuns();
    const std::wstring key = L"inputPipe=";
    std::wstring name = commandLine;
    name = name.substr(name.find(key) + key.size());
    name = L"\\\\.\\pipe\\" + name.substr(0, name.find(L' '));
    const HANDLE pipe =
        ::CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    Reader reader(pipe);
    while (!finished) {
        pump();
        if (!reader.poll() && !neverEnd) break;
        ::Sleep(kIdleMs);
    }
    return 0;
}
