#include "tools/simulated_device/device_folder.h"

#include "tools/printpath/windows/handle.h"

#include <cstdlib>

namespace {

constexpr DWORD kPathUnits = 32768;
constexpr DWORD kLongestDelayMs = 600000;
constexpr DWORD kChunkBytes = 65536;

using printpath::fileHandle;
using printpath::Handle;

Handle openFile(const std::wstring& path, DWORD access, DWORD creation) {
    return fileHandle(::CreateFileW(path.c_str(), access,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    creation, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool readFile(const std::wstring& path, std::string& bytes) {
    const Handle file = openFile(path, GENERIC_READ, OPEN_EXISTING);
    if (!file) return false;
    bytes.clear();
    std::string chunk(kChunkBytes, '\0');
    DWORD count = 0;
    while (::ReadFile(file.get(), chunk.data(), kChunkBytes, &count, nullptr) && count > 0)
        bytes.append(chunk, 0, count);
    return true;
}

HMODULE ownModule() {
    HMODULE module = nullptr;
    ::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

std::wstring folderOfPages() {
    std::wstring path(kPathUnits, L'\0');
    path.resize(::GetEnvironmentVariableW(L"QVSM_DEVICE_FOLDER", path.data(), kPathUnits));
    if (!path.empty()) return path + L"\\";
    path.resize(kPathUnits);
    path.resize(::GetModuleFileNameW(ownModule(), path.data(), kPathUnits));
    return path.substr(0, path.rfind(L'\\') + 1) + L"pages\\";
}

}  // namespace

DeviceFolder::DeviceFolder() : _folder(folderOfPages()) {}

bool DeviceFolder::offline() const {
    return ::GetFileAttributesW((_folder + L"offline").c_str()) != INVALID_FILE_ATTRIBUTES;
}

void DeviceFolder::answerSlowly() const {
    std::string text;
    if (!readFile(_folder + L"slow", text)) return;
    const unsigned long delayMs = std::strtoul(text.c_str(), nullptr, 10);
    ::Sleep(delayMs < kLongestDelayMs ? delayMs : kLongestDelayMs);
}

DWORD DeviceFolder::claimedLength(std::size_t pageBytes) const {
    std::string text;
    if (!readFile(_folder + L"claimed-length", text)) return static_cast<DWORD>(pageBytes);
    return std::strtoul(text.c_str(), nullptr, 10);
}

bool DeviceFolder::readPage(const std::string& path, std::string& page) const {
    if (path.empty() || path.front() != '/' || path.find("..") != std::string::npos ||
        path.find(':') != std::string::npos)
        return false;
    std::wstring file = _folder;
    for (const char c : path.substr(1))
        file += c == '/' ? L'\\' : static_cast<wchar_t>(static_cast<unsigned char>(c));
    return readFile(file, page);
}

void DeviceFolder::log(const std::string& line) const {
    const Handle file = openFile(_folder + L"device.log", FILE_APPEND_DATA, OPEN_ALWAYS);
    if (!file) return;
    const std::string text = line + "\n";
    DWORD count = 0;
    ::WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
}
