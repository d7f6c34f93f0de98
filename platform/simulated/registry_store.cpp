#include "platform/simulated/registry_store.h"

#include "platform/simulated/memory_check.h"
#include "platform/utf16.h"

#include <cstring>
#include <new>
#include <utility>

namespace platform::simulated {
namespace {

// Each key has two handles, one for reading only and one for reading and writing. Both are
// multiples of four, as the system's handles are.
constexpr std::intptr_t kHandlesOfKey = 8;
constexpr std::intptr_t kWritable = 4;
// Fills a buffer that was too small. No text and no number that a test expects has this byte.
constexpr int kSpoiledByte = 0xA5;

std::intptr_t numberOf(NativeHandle handle) noexcept {
    return reinterpret_cast<std::intptr_t>(handle);
}

NativeHandle handleOf(std::intptr_t id, std::intptr_t access) noexcept {
    return reinterpret_cast<NativeHandle>(id * kHandlesOfKey + access);
}

}  // namespace

RegistryStore::Key& RegistryStore::made(Hive hive, std::wstring_view path) {
    if (const Key* const found = find(hive, path)) return const_cast<Key&>(*found);
    const auto parent = path.rfind(L'\\');
    if (parent != std::wstring_view::npos) static_cast<void>(made(hive, path.substr(0, parent)));
    _keys.push_back({_lastId + 1, hive, std::wstring(path), {}});
    ++_lastId;
    return _keys.back();
}

const RegistryStore::Key* RegistryStore::find(Hive hive, std::wstring_view path) const noexcept {
    for (const Key& key : _keys) {
        if (key.hive == hive && sameName(key.path, path)) return &key;
    }
    return nullptr;
}

const RegistryStore::Key* RegistryStore::find(NativeHandle handle) const noexcept {
    for (const Key& key : _keys) {
        if (key.id == numberOf(handle) / kHandlesOfKey) return &key;
    }
    return nullptr;
}

void RegistryStore::create(Hive hive, std::wstring_view path) {
    const SpinScope scope(_lock);
    static_cast<void>(made(hive, path));
}

void RegistryStore::set(Hive hive, std::wstring_view path, std::wstring_view name, ValueType type,
                        std::string_view bytes) {
    const SpinScope scope(_lock);
    made(hive, path).values.insert_or_assign(std::wstring(name), Value{type, std::string(bytes)});
}

void RegistryStore::setDword(Hive hive, std::wstring_view path, std::wstring_view name,
                             std::uint32_t value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    set(hive, path, name, ValueType::Dword, std::string_view(bytes, sizeof bytes));
}

void RegistryStore::setText(Hive hive, std::wstring_view path, std::wstring_view name,
                            std::wstring_view text) {
    const std::u16string units = toUtf16(text);
    set(hive, path, name, ValueType::String,
        std::string_view(reinterpret_cast<const char*>(units.c_str()),
                         (units.size() + 1) * sizeof(char16_t)));
}

std::optional<RegistryStore::Value> RegistryStore::value(Hive hive, std::wstring_view path,
                                                         std::wstring_view name) const {
    const SpinScope scope(_lock);
    const Key* const key = find(hive, path);
    if (key == nullptr) return std::nullopt;
    const auto found = key->values.find(name);
    if (found == key->values.end()) return std::nullopt;
    return found->second;
}

std::optional<std::uint32_t> RegistryStore::dword(Hive hive, std::wstring_view path,
                                                  std::wstring_view name) const {
    const auto found = value(hive, path, name);
    std::uint32_t number = 0;
    if (!found || found->type != ValueType::Dword || found->bytes.size() != sizeof number) {
        return std::nullopt;
    }
    std::memcpy(&number, found->bytes.data(), sizeof number);
    return number;
}

std::optional<std::wstring> RegistryStore::text(Hive hive, std::wstring_view path,
                                                std::wstring_view name) const {
    const auto found = value(hive, path, name);
    if (!found || found->type != ValueType::String) return std::nullopt;
    std::u16string units(found->bytes.size() / sizeof(char16_t), u'\0');
    if (!units.empty()) {
        std::memcpy(units.data(), found->bytes.data(), units.size() * sizeof(char16_t));
    }
    while (!units.empty() && units.back() == u'\0')
        units.pop_back();
    return fromUtf16(units);
}

bool RegistryStore::exists(Hive hive, std::wstring_view path) const {
    const SpinScope scope(_lock);
    return find(hive, path) != nullptr;
}

int RegistryStore::openKeys() const noexcept {
    const SpinScope scope(_lock);
    return _openKeys;
}

void RegistryStore::reset() {
    std::list<Key> gone;
    const SpinScope scope(_lock);
    gone.swap(_keys);
}

std::uint32_t RegistryStore::open(Hive hive, std::wstring_view path, NativeHandle& key) noexcept {
    const SpinScope scope(_lock);
    const Key* const found = find(hive, path);
    if (found == nullptr) return kFileNotFound;
    key = handleOf(found->id, 0);
    ++_openKeys;
    return kSuccess;
}

std::uint32_t RegistryStore::openOrCreate(Hive hive, std::wstring_view path,
                                          NativeHandle& key) noexcept {
    const SpinScope scope(_lock);
    try {
        key = handleOf(made(hive, path).id, kWritable);
    } catch (const std::bad_alloc&) {
        return kNotEnoughMemory;
    }
    ++_openKeys;
    return kSuccess;
}

void RegistryStore::close(NativeHandle) noexcept {
    const SpinScope scope(_lock);
    --_openKeys;
}

std::uint32_t RegistryStore::read(NativeHandle key, std::wstring_view name, ValueType& type,
                                  void* to, std::uint32_t& bytes) const noexcept {
    const SpinScope scope(_lock);
    const Key* const opened = find(key);
    if (opened == nullptr) return kInvalidHandleError;
    const auto found = opened->values.find(name);
    if (found == opened->values.end()) return kFileNotFound;
    const std::string& content = found->second.bytes;
    const std::uint32_t capacity = bytes;
    bytes = static_cast<std::uint32_t>(content.size());
    if (to != nullptr && capacity < bytes) {
        // The system may leave anything in a buffer that is too small. Spoil it, so that a caller
        // which reads it nevertheless fails its test.
        std::memset(to, kSpoiledByte, capacity);
        return kMoreData;
    }
    if (to != nullptr && bytes != 0) std::memcpy(to, content.data(), bytes);
    type = found->second.type;
    return kSuccess;
}

std::uint32_t RegistryStore::write(NativeHandle key, std::wstring_view name, ValueType type,
                                   const void* from, std::uint32_t bytes) noexcept {
    checkDefined(from, bytes);
    const SpinScope scope(_lock);
    const Key* const opened = find(key);
    if (opened == nullptr) return kInvalidHandleError;
    if ((numberOf(key) & kWritable) == 0) return kAccessDenied;
    try {
        Value value{type, {}};
        if (bytes != 0) value.bytes.assign(static_cast<const char*>(from), bytes);
        const_cast<Key*>(opened)->values.insert_or_assign(std::wstring(name), std::move(value));
        return kSuccess;
    } catch (const std::bad_alloc&) {
        return kNotEnoughMemory;
    }
}

std::uint32_t RegistryStore::remove(NativeHandle key, std::wstring_view name) noexcept {
    const SpinScope scope(_lock);
    const Key* const opened = find(key);
    if (opened == nullptr) return kInvalidHandleError;
    if ((numberOf(key) & kWritable) == 0) return kAccessDenied;
    auto& values = const_cast<Key*>(opened)->values;
    const auto found = values.find(name);
    if (found == values.end()) return kFileNotFound;
    values.erase(found);
    return kSuccess;
}

}  // namespace platform::simulated
