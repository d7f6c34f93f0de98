#include "platform/simulated/desktop.h"

#include <new>
#include <utility>

namespace platform::simulated {
namespace {

template <typename Text, typename View>
bool remember(std::vector<Text>& list, View text) noexcept {
    try {
        list.emplace_back(text);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

std::vector<std::wstring> Desktop::addresses() const {
    const SpinScope scope(_lock);
    return _state.addresses;
}

std::vector<std::wstring> Desktop::programs() const {
    const SpinScope scope(_lock);
    return _state.programs;
}

std::vector<std::string> Desktop::documents() const {
    const SpinScope scope(_lock);
    return _state.documents;
}

void Desktop::setFolder(Folder folder, std::string_view path) {
    const SpinScope scope(_lock);
    (folder == Folder::ProgramFiles ? _state.programFiles : _state.commonApplicationData) = path;
}

void Desktop::reset() {
    Opened gone;
    const SpinScope scope(_lock);
    std::swap(gone, _state);
}

bool Desktop::openAddress(std::wstring_view url) noexcept {
    const SpinScope scope(_lock);
    return remember(_state.addresses, url);
}

bool Desktop::openProgram(std::wstring_view path) noexcept {
    const SpinScope scope(_lock);
    return remember(_state.programs, path);
}

bool Desktop::openDocument(std::string_view path) noexcept {
    const SpinScope scope(_lock);
    return remember(_state.documents, path);
}

std::string Desktop::folder(Folder folder) const {
    const SpinScope scope(_lock);
    const bool isPrograms = folder == Folder::ProgramFiles;
    const std::string& set = isPrograms ? _state.programFiles : _state.commonApplicationData;
    if (!set.empty()) return set;
    return isPrograms ? "C:\\Program Files" : "C:\\ProgramData";
}

}  // namespace platform::simulated
