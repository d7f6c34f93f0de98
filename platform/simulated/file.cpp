#include "platform/file.h"

#include "platform/simulated/world.h"

#include <new>
#include <utility>

namespace platform {

using simulated::Call;
using simulated::world;

bool copyFile(const char* from, const char* to) noexcept {
    if (world().faults.strikes(Call::FileCopy)) return false;
    try {
        return world().files.copy(from, to);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool readFile(const char* path, std::string& bytes) {
    if (world().faults.strikes(Call::FileRead)) return false;
    auto content = world().files.content(path);
    if (!content) return false;
    bytes = std::move(*content);
    return true;
}

bool writeFile(const char* path, std::string_view bytes) noexcept {
    if (world().faults.strikes(Call::FileWrite)) return false;
    try {
        return world().files.write(path, bytes);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace platform
