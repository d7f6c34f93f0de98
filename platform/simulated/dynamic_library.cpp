#include "platform/dynamic_library.h"

#include "platform/simulated/world.h"

namespace platform {

using simulated::Call;
using simulated::world;

DynamicLibrary::DynamicLibrary(const wchar_t* name) noexcept
    : _module(world().faults.strikes(Call::LibraryLoad) ? nullptr : world().device.load(name)) {}

DynamicLibrary::~DynamicLibrary() {
    if (_module != nullptr) world().device.unload();
}

void* DynamicLibrary::function(const char* name) const noexcept {
    if (_module == nullptr || world().faults.strikes(Call::FunctionLookup)) return nullptr;
    return world().device.function(name);
}

}  // namespace platform
