#include "platform/simulated/files.h"

#include <utility>

namespace platform::simulated {

void Files::put(std::string_view path, std::string_view bytes, Access access) {
    const SpinScope scope(_lock);
    _files.insert_or_assign(std::string(path), File{std::string(bytes), access});
}

std::optional<std::string> Files::content(std::string_view path) const {
    const SpinScope scope(_lock);
    const auto found = _files.find(path);
    if (found == _files.end()) return std::nullopt;
    return found->second.bytes;
}

void Files::reset() {
    Map gone;
    const SpinScope scope(_lock);
    gone.swap(_files);
}

bool Files::replace(std::string_view path, File&& file) {
    const auto found = _files.find(path);
    if (found == _files.end()) {
        _files.emplace(path, std::move(file));
        return true;
    }
    if (found->second.access == Access::ReadOnly) return false;
    found->second = std::move(file);
    return true;
}

bool Files::copy(std::string_view from, std::string_view to) {
    const SpinScope scope(_lock);
    const auto found = _files.find(from);
    return found != _files.end() && replace(to, File(found->second));
}

bool Files::write(std::string_view path, std::string_view bytes) {
    const SpinScope scope(_lock);
    return replace(path, File{std::string(bytes), Access::Writable});
}

}  // namespace platform::simulated
