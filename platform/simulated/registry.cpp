#include "platform/registry.h"

#include "platform/simulated/world.h"

namespace platform {

using simulated::Call;
using simulated::world;

RegistryKey::~RegistryKey() {
    close();
}

void RegistryKey::close() noexcept {
    if (_key != nullptr) world().registry.close(_key);
    _key = nullptr;
}

std::uint32_t RegistryKey::openForReading(Hive hive, const wchar_t* path) noexcept {
    close();
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::RegistryOpen, error)) return error;
    return world().registry.open(hive, path, _key);
}

std::uint32_t RegistryKey::createForWriting(Hive hive, const wchar_t* path) noexcept {
    close();
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::RegistryCreate, error)) return error;
    return world().registry.openOrCreate(hive, path, _key);
}

std::uint32_t RegistryKey::read(const wchar_t* name, ValueType& type, void* to,
                                std::uint32_t& bytes) const noexcept {
    if (_key == nullptr) return kInvalidHandleError;
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::RegistryRead, error)) return error;
    return world().registry.read(_key, name, type, to, bytes);
}

std::uint32_t RegistryKey::write(const wchar_t* name, ValueType type, const void* from,
                                 std::uint32_t bytes) noexcept {
    if (_key == nullptr) return kInvalidHandleError;
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::RegistryWrite, error)) return error;
    return world().registry.write(_key, name, type, from, bytes);
}

std::uint32_t RegistryKey::remove(const wchar_t* name) noexcept {
    if (_key == nullptr) return kInvalidHandleError;
    std::uint32_t error = kSuccess;
    if (world().faults.strikes(Call::RegistryRemove, error)) return error;
    return world().registry.remove(_key, name);
}

}  // namespace platform
