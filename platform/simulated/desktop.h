#pragma once

#include "platform/shell.h"
#include "platform/simulated/spin_lock.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

// What the shell was asked to open, in that order, and the folders that it knows. Any thread may
// call.
class Desktop {
public:
    [[nodiscard]] std::vector<std::wstring> addresses() const;
    [[nodiscard]] std::vector<std::wstring> programs() const;
    [[nodiscard]] std::vector<std::string> documents() const;
    void setFolder(Folder folder, std::string_view path);
    void reset();

    // For the simulated services. False: no memory to remember it.
    [[nodiscard]] bool openAddress(std::wstring_view url) noexcept;
    [[nodiscard]] bool openProgram(std::wstring_view path) noexcept;
    [[nodiscard]] bool openDocument(std::string_view path) noexcept;
    [[nodiscard]] std::string folder(Folder folder) const;

private:
    struct Opened {
        std::vector<std::wstring> addresses;
        std::vector<std::wstring> programs;
        std::vector<std::string> documents;
        std::string programFiles;           // empty: the usual place
        std::string commonApplicationData;  // the same
    };

    mutable SpinLock _lock;
    Opened _state;
};

}  // namespace platform::simulated
