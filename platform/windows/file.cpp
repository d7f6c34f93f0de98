#include "platform/file.h"

#include "platform/windows/handles.h"

#include <algorithm>
#include <cstddef>

namespace platform {
namespace {

constexpr std::size_t kLargestBlock = 1 << 20;  // the most bytes in one system call

}  // namespace

bool copyFile(const char* from, const char* to) noexcept {
    constexpr BOOL kOverwrite = FALSE;  // the parameter means "fail if the file exists"
    return ::CopyFileA(from, to, kOverwrite) != 0;
}

bool readFile(const char* path, std::string& bytes) {
    const FileHandle file(::CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return false;
    LARGE_INTEGER size;
    if (::GetFileSizeEx(file.get(), &size) == 0) return false;

    std::string content(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t arrived = 0;
    // Equally right with <=: a read of no bytes ends the loop.
    while (arrived < content.size()) {
        const auto wanted = static_cast<DWORD>(std::min(content.size() - arrived, kLargestBlock));
        DWORD got = 0;
        if (::ReadFile(file.get(), content.data() + arrived, wanted, &got, nullptr) == 0) {
            return false;
        }
        if (got == 0) break;  // the file has become shorter since we asked for its size
        arrived += got;
    }
    content.resize(arrived);
    bytes = std::move(content);
    return true;
}

bool writeFile(const char* path, std::string_view bytes) noexcept {
    const FileHandle file(::CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return false;
    while (!bytes.empty()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestBlock));
        DWORD written = 0;
        if (::WriteFile(file.get(), bytes.data(), wanted, &written, nullptr) == 0) return false;
        if (written == 0) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

}  // namespace platform
