#pragma once

#include "platform/shell.h"
#include "platform/simulated/spin_lock.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

// Remembers what the shell was asked to open, in the order of the calls, and holds the folders that
// it names. Any thread may call.
class Desktop {
public:
    [[nodiscard]] std::vector<std::wstring> addresses() const;
    [[nodiscard]] std::vector<std::wstring> programs() const;
    [[nodiscard]] std::vector<std::string> documents() const;
    void setFolder(Folder folder, std::string_view path);
    void reset();

    // For the simulated services. False when there is no memory to remember the call.
    [[nodiscard]] bool openAddress(std::wstring_view url) noexcept;
    [[nodiscard]] bool openProgram(std::wstring_view path) noexcept;
    [[nodiscard]] bool openDocument(std::string_view path) noexcept;
    [[nodiscard]] std::string folder(Folder folder) const;

private:
    struct Opened {
        std::vector<std::wstring> addresses;
        std::vector<std::wstring> programs;
        std::vector<std::string> documents;
        std::string programFiles;           // empty: the system's usual folder
        std::string commonApplicationData;  // empty: the system's usual folder
    };

    mutable SpinLock _lock;
    Opened _state;
};

}  // namespace platform::simulated
