#include "system.h"

#include <windows.h>
#include <stdexcept>

#include <winspool.h>

namespace contract {
namespace {

constexpr DWORD kBufferBytes = 1 << 20;
constexpr UINT kRunProcedure = WM_APP;

LRESULT CALLBACK runProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kRunProcedure) return ::DefWindowProcW(window, message, wParam, lParam);
    const std::unique_ptr<std::function<void()>> procedure(
        reinterpret_cast<std::function<void()>*>(lParam));
    (*procedure)();
    return 0;
}

HWND messageWindow() {
    static const HWND window = [] {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = &runProcedure;
        windowClass.lpszClassName = L"ContractMessages";
        ::RegisterClassW(&windowClass);
        return ::CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                 nullptr, nullptr, nullptr);
    }();
    return window;
}

}  // namespace

struct PipeServer::State {
    std::wstring path;
    HANDLE pipe;
};

PipeServer::PipeServer(std::wstring_view name, Kind kind) : _state(std::make_unique<State>()) {
    _state->path = L"\\\\.\\pipe\\" + std::wstring(name);
    const DWORD type = kind == Kind::Message ? PIPE_TYPE_MESSAGE : PIPE_TYPE_BYTE;
    _state->pipe = ::CreateNamedPipeW(_state->path.c_str(), PIPE_ACCESS_DUPLEX, type | PIPE_WAIT, 1,
                                      kBufferBytes, kBufferBytes, 0, nullptr);
    if (_state->pipe == platform::invalidHandle()) throw std::runtime_error("no named pipe");
}

PipeServer::~PipeServer() {
    close();
}

std::wstring PipeServer::path() const {
    return _state->path;
}

void PipeServer::write(std::string_view message) {
    DWORD written = 0;
    if (::WriteFile(_state->pipe, message.data(), static_cast<DWORD>(message.size()), &written,
                    nullptr) == 0) {
        throw std::runtime_error("the server cannot write");
    }
}

std::string PipeServer::received(std::size_t bytes) {
    std::string text(bytes, '\0');
    DWORD got = 0;
    ::ReadFile(_state->pipe, text.data(), static_cast<DWORD>(bytes), &got, nullptr);
    text.resize(got);
    return text;
}

void PipeServer::close() {
    if (_state->pipe != platform::invalidHandle()) ::CloseHandle(_state->pipe);
    _state->pipe = platform::invalidHandle();
}

void addPrinter(const wchar_t* name, const wchar_t* value, std::string_view bytes) {
    wchar_t driver[] = L"Contract driver";
    wchar_t driverFile[] = L"wineps.drv";
    wchar_t configFile[] = L"wineps.drv";
    wchar_t dataFile[] = L"contract.ppd";
    wchar_t environment[] = L"Windows x64";
    DRIVER_INFO_3W driverInfo = {};
    driverInfo.cVersion = 3;
    driverInfo.pName = driver;
    driverInfo.pEnvironment = environment;
    driverInfo.pDriverPath = driverFile;
    driverInfo.pConfigFile = configFile;
    driverInfo.pDataFile = dataFile;
    ::AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driverInfo),
                          APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);

    std::wstring printerName(name);
    wchar_t port[] = L"LPT1:";
    wchar_t processor[] = L"wineps";
    wchar_t dataType[] = L"RAW";
    PRINTER_INFO_2W info = {};
    info.pPrinterName = printerName.data();
    info.pPortName = port;
    info.pDriverName = driver;
    info.pPrintProcessor = processor;
    info.pDatatype = dataType;
    HANDLE printer = ::AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    if (printer == nullptr) ::OpenPrinterW(printerName.data(), &printer, nullptr);
    if (printer == nullptr) throw std::runtime_error("no printer");
    std::wstring valueName(value);
    std::string content(bytes);
    ::SetPrinterDataW(printer, valueName.data(), REG_BINARY,
                      reinterpret_cast<BYTE*>(content.data()), static_cast<DWORD>(content.size()));
    ::ClosePrinter(printer);
}

std::string temporaryFolder() {
    char path[MAX_PATH + 1];
    std::string folder(path, ::GetTempPathA(MAX_PATH, path));
    while (!folder.empty() && folder.back() == '\\')
        folder.pop_back();
    return folder;
}

void provideTexts() {}  // the library is in the folder of this program

const wchar_t* knownLibrary() {
    return L"kernel32.dll";
}

const char* knownFunction() {
    return "GetTickCount";
}

void postMessage(std::function<void()> procedure) {
    auto owned = std::make_unique<std::function<void()>>(std::move(procedure));
    const auto parameter = reinterpret_cast<LPARAM>(owned.get());
    if (::PostMessageW(messageWindow(), kRunProcedure, 0, parameter) != 0) {
        static_cast<void>(owned.release());
    }
}

void postQuit() {
    ::PostQuitMessage(0);
}

}  // namespace contract
