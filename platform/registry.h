#pragma once

#include "platform/native_handle.h"

#include <cstdint>

namespace platform {

enum class Hive { CurrentUser, LocalMachine };
enum class ValueType : std::uint32_t { None = 0, String = 1, Binary = 3, Dword = 4 };

// An open registry key, closed by the destructor and by the next open. Every operation returns the
// system's error number, 0 for success; on an object without a key it returns kInvalidHandleError.
// Paths are below the hive, names may be empty (the key's default value). One thread at a time.
class RegistryKey {
public:
    RegistryKey() noexcept = default;
    ~RegistryKey();
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    // Read access to an existing key.
    [[nodiscard]] std::uint32_t openForReading(Hive hive, const wchar_t* path) noexcept;
    // Full access; makes the key where it is missing.
    [[nodiscard]] std::uint32_t createForWriting(Hive hive, const wchar_t* path) noexcept;

    // `bytes` is the capacity of `to` on entry and the size of the value on return. A value larger
    // than `to` gives kMoreData; what `to` then holds is not defined, because the system may have
    // written to it. `type` is written on success only.
    [[nodiscard]] std::uint32_t read(const wchar_t* name, ValueType& type, void* to,
                                     std::uint32_t& bytes) const noexcept;
    // Replaces the value if there is one; `bytes` of `from` are stored as they are.
    [[nodiscard]] std::uint32_t write(const wchar_t* name, ValueType type, const void* from,
                                      std::uint32_t bytes) noexcept;
    // kFileNotFound when there is no such value.
    [[nodiscard]] std::uint32_t remove(const wchar_t* name) noexcept;

private:
    void close() noexcept;

    NativeHandle _key = nullptr;  // owned
};

}  // namespace platform
