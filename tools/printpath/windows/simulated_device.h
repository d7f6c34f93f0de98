#pragma once

#include <filesystem>
#include <string>

namespace printpath {

// The simulated device of one scenario: a folder of pages, the switches of the device and its log.
// Throws Failure when files cannot be written.
class SimulatedDevice {
public:
    // `library` is the folder with rtqewsi.dll and the default pages, which are copied to `folder`.
    SimulatedDevice(const std::filesystem::path& library, const std::filesystem::path& folder);

    const std::filesystem::path& folder() const { return _folder; }
    const std::filesystem::path& libraryFile() const { return _libraryFile; }

    // `path` is the path that the monitor asks for, such as "/DevMgmt/ProductUsageDyn.xml".
    void setPage(const std::string& path, const std::string& bytes);
    void removePage(const std::string& path);
    // Replaces the text of the first element of this name in a page.
    void setElement(const std::string& path, const std::string& element, const std::string& text);

    void setOffline(bool offline);
    void setSlow(int milliseconds);

    // Lines of the log, one for each open, close, page and button.
    std::string log() const;

private:
    std::filesystem::path pageFile(const std::string& path) const;

    std::filesystem::path _libraryFile;
    std::filesystem::path _folder;
};

}  // namespace printpath
