#include "tests/printer/stored_values.h"

#include "tests/support/clean_platform.h"

#include <gtest/gtest.h>

namespace {

constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";
constexpr std::uint32_t kMostBytes = 200000;

std::optional<std::uint32_t> readDword(const wchar_t* name) {
    const auto bytes = stored::read(name, platform::ValueType::Dword);
    if (!bytes || bytes->size() != 4) return std::nullopt;
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = (value << 8) | (*bytes)[i];
    return value;
}

void writeDword(const wchar_t* name, std::uint32_t value) {
    stored::Bytes bytes(4);
    for (auto& byte : bytes) {
        byte = static_cast<unsigned char>(value & 0xFF);
        value >>= 8;
    }
    stored::write(name, platform::ValueType::Dword, bytes);
}

}  // namespace

void stored::clear() {
    cleanPlatform();
}

void stored::write(const wchar_t* name, platform::ValueType type, const Bytes& bytes) {
    platform::RegistryKey key;
    ASSERT_EQ(key.createForWriting(platform::Hive::CurrentUser, kKey), 0U);
    ASSERT_EQ(key.write(name, type, bytes.data(), static_cast<std::uint32_t>(bytes.size())), 0U);
}

void stored::writeVersion(std::uint32_t version) {
    writeDword(L"CartDataVer", version);
}

void stored::writeRecord(const Bytes& bytes) {
    write(L"CartData", platform::ValueType::Binary, bytes);
}

void stored::writeCurrent(std::uint32_t serial) {
    writeDword(L"CurrCart", serial);
}

bool stored::exists(const wchar_t* name) {
    platform::RegistryKey key;
    if (key.openForReading(platform::Hive::CurrentUser, kKey) != 0) return false;
    platform::ValueType type = platform::ValueType::None;
    std::uint32_t bytes = 0;
    return key.read(name, type, nullptr, bytes) == 0;
}

std::optional<stored::Bytes> stored::read(const wchar_t* name, platform::ValueType type) {
    platform::RegistryKey key;
    if (key.openForReading(platform::Hive::CurrentUser, kKey) != 0) return std::nullopt;
    Bytes bytes(kMostBytes);
    std::uint32_t size = kMostBytes;
    platform::ValueType found = platform::ValueType::None;
    if (key.read(name, found, bytes.data(), size) != 0 || found != type) return std::nullopt;
    bytes.resize(size);
    return bytes;
}

std::optional<std::uint32_t> stored::version() {
    return readDword(L"CartDataVer");
}

std::optional<std::uint32_t> stored::current() {
    return readDword(L"CurrCart");
}

stored::Bytes stored::record() {
    return read(L"CartData", platform::ValueType::Binary).value_or(Bytes());
}
