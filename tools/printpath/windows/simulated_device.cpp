#include "tools/printpath/windows/simulated_device.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"

#include <cstddef>
#include <system_error>

namespace printpath {

namespace {

constexpr wchar_t kLibraryName[] = L"rtqewsi.dll";
constexpr wchar_t kDefaultPages[] = L"pages";
constexpr wchar_t kOffline[] = L"offline";
constexpr wchar_t kSlow[] = L"slow";
constexpr wchar_t kLog[] = L"device.log";

}  // namespace

SimulatedDevice::SimulatedDevice(const std::filesystem::path& library,
                                 const std::filesystem::path& folder)
    : _libraryFile(library / kLibraryName), _folder(folder) {
    std::error_code error;
    if (!std::filesystem::exists(_libraryFile, error))
        throw Failure("there is no simulated device " + pathText(_libraryFile), Outcome::Unusable);
    std::filesystem::remove_all(_folder, error);
    std::filesystem::create_directories(_folder, error);
    std::filesystem::copy(library / kDefaultPages, _folder,
                          std::filesystem::copy_options::recursive, error);
    if (error)
        throw Failure("the pages of the device cannot be copied to " + pathText(_folder),
                      Outcome::Unusable);
}

void SimulatedDevice::setPage(const std::string& path, const std::string& bytes) {
    writeWholeFile(pageFile(path), bytes);
}

void SimulatedDevice::removePage(const std::string& path) {
    std::error_code ignored;
    std::filesystem::remove(pageFile(path), ignored);
}

void SimulatedDevice::setElement(const std::string& path, const std::string& element,
                                 const std::string& text) {
    std::string page = readWholeFile(pageFile(path));
    const std::string opening = "<" + element + ">";
    const std::size_t start = page.find(opening);
    const std::size_t end = page.find("</" + element + ">");
    if (start == std::string::npos || end == std::string::npos)
        throw Failure("the page " + path + " has no <" + element + ">", Outcome::Unusable);
    const std::size_t from = start + opening.size();
    setPage(path, page.replace(from, end - from, text));
}

void SimulatedDevice::setOffline(bool offline) {
    std::error_code ignored;
    if (offline)
        writeWholeFile(_folder / kOffline, "");
    else
        std::filesystem::remove(_folder / kOffline, ignored);
}

void SimulatedDevice::setSlow(int milliseconds) {
    writeWholeFile(_folder / kSlow, std::to_string(milliseconds));
}

std::string SimulatedDevice::log() const {
    return readWholeFile(_folder / kLog);
}

std::filesystem::path SimulatedDevice::pageFile(const std::string& path) const {
    if (path.empty() || path.front() != '/' || path.find("..") != std::string::npos ||
        path.find(':') != std::string::npos)
        throw Failure("a page of the device is named like /DevMgmt/Name.xml, not " + shown(path),
                      Outcome::Unusable);
    return _folder / wideFromUtf8(path.substr(1));
}

}  // namespace printpath
