#pragma once

#include "platform/native_handle.h"
#include "platform/registry.h"
#include "platform/simulated/case_insensitive.h"
#include "platform/simulated/spin_lock.h"

#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace platform::simulated {

inline constexpr std::uint32_t kAccessDenied = 5;
inline constexpr std::uint32_t kNotEnoughMemory = 8;

// The registry. Texts are stored as UTF-16 with their NUL, as on the system. Any thread may call.
class RegistryStore {
public:
    struct Value {
        ValueType type = ValueType::None;
        std::string bytes;
    };

    // These create the key, and every key above it, if it does not exist.
    void create(Hive hive, std::wstring_view path);
    void set(Hive hive, std::wstring_view path, std::wstring_view name, ValueType type,
             std::string_view bytes);
    void setDword(Hive hive, std::wstring_view path, std::wstring_view name, std::uint32_t value);
    void setText(Hive hive, std::wstring_view path, std::wstring_view name, std::wstring_view text);

    [[nodiscard]] std::optional<Value> value(Hive hive, std::wstring_view path,
                                             std::wstring_view name) const;
    [[nodiscard]] std::optional<std::uint32_t> dword(Hive hive, std::wstring_view path,
                                                     std::wstring_view name) const;
    // The stored text without its NUL.
    [[nodiscard]] std::optional<std::wstring> text(Hive hive, std::wstring_view path,
                                                   std::wstring_view name) const;
    [[nodiscard]] bool exists(Hive hive, std::wstring_view path) const;
    // Keys that were opened and not closed: 0 when nothing leaks.
    [[nodiscard]] int openKeys() const noexcept;
    void reset();

    // For the simulated services. A handle names the key and whether it may be written.
    [[nodiscard]] std::uint32_t open(Hive hive, std::wstring_view path, NativeHandle& key) noexcept;
    [[nodiscard]] std::uint32_t openOrCreate(Hive hive, std::wstring_view path,
                                             NativeHandle& key) noexcept;
    void close(NativeHandle key) noexcept;
    [[nodiscard]] std::uint32_t read(NativeHandle key, std::wstring_view name, ValueType& type,
                                     void* to, std::uint32_t& bytes) const noexcept;
    [[nodiscard]] std::uint32_t write(NativeHandle key, std::wstring_view name, ValueType type,
                                      const void* from, std::uint32_t bytes) noexcept;
    [[nodiscard]] std::uint32_t remove(NativeHandle key, std::wstring_view name) noexcept;

private:
    struct Key {
        std::intptr_t id;  // makes the handles; never used twice
        Hive hive;
        std::wstring path;
        std::map<std::wstring, Value, CaseInsensitive> values;
    };

    [[nodiscard]] Key& made(Hive hive, std::wstring_view path);
    [[nodiscard]] const Key* find(Hive hive, std::wstring_view path) const noexcept;
    [[nodiscard]] const Key* find(NativeHandle handle) const noexcept;

    mutable SpinLock _lock;
    std::list<Key> _keys;
    std::intptr_t _lastId = 0;
    int _openKeys = 0;
};

}  // namespace platform::simulated
