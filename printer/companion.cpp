#include "printer/companion.h"

#include "platform/native_handle.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/trace.h"
#include "printer/registry_keys.h"
#include "printer/registry_text.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

namespace {

constexpr wchar_t kPathValue[] = L"ApplicationPath";  // kept: see decision 0012
constexpr std::size_t kPathUnits = 512;
constexpr char kNotLaunched[] = "Failed to launch OrreryMX.\n";  // kept: see decision 0012

bool start() {
    platform::RegistryKey key;
    std::uint32_t error =
        key.openForReading(platform::Hive::LocalMachine, registry_key::kCompanion);
    if (error != platform::kSuccess) {
        platform::trace("Query registry key error, %d", static_cast<int>(error));
        return false;
    }
    std::wstring path;
    error = readRegistryText(key, kPathValue, kPathUnits, path);
    if (error != platform::kSuccess) {
        platform::trace("Query registry value error, %d", static_cast<int>(error));
        return false;
    }
    // The shell opens a folder for an empty name, so an empty name does not reach it.
    if (path.empty() || !platform::startProgram(path.c_str(), error)) {
        platform::trace(kNotLaunched);
        return false;
    }
    return true;
}

}  // namespace

bool startCompanion() {
    // The path takes memory. A user who clicked the link can click it again.
    try {
        return start();
    } catch (const std::bad_alloc&) {
        platform::trace(kNotLaunched);
        return false;
    }
}
