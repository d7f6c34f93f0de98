#include "platform/shell.h"

#include "platform/shell_argument.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/registry_store.h"
#include "platform/simulated/world.h"

#include <new>

namespace platform {

using simulated::Call;
using simulated::world;

bool openAddress(const wchar_t* url) noexcept try {
    return !world().faults.strikes(Call::AddressOpen) &&
           world().desktop.openAddress(shellArgument(url));
} catch (const std::bad_alloc&) {
    return false;
}

bool startProgram(const wchar_t* path, std::uint32_t& error) noexcept {
    if (world().faults.strikes(Call::ProgramStart, error)) return false;
    if (world().desktop.openProgram(path)) return true;
    error = simulated::kNotEnoughMemory;
    return false;
}

bool openDocument(const char* path) noexcept {
    return !world().faults.strikes(Call::DocumentOpen) && world().desktop.openDocument(path);
}

bool folderPath(Folder folder, std::string& path) {
    if (world().faults.strikes(Call::FolderLookup)) return false;
    path = world().desktop.folder(folder);
    return true;
}

}  // namespace platform
