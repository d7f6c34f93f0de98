#include "platform/registry.h"

#include <gtest/gtest.h>
#include <array>
#include <cstring>
#include <string>

namespace {

using platform::Hive;
using platform::RegistryKey;
using platform::ValueType;

constexpr wchar_t kPath[] = L"Software\\Corvane\\Contract test";
constexpr std::uint32_t kAccessDenied = 5;

class RegistryTest : public testing::TestWithParam<Hive> {
protected:
    void SetUp() override { ASSERT_EQ(_key.createForWriting(GetParam(), kPath), 0U); }

    RegistryKey _key;
};

TEST_P(RegistryTest, AWrittenValueIsReadBackWithItsType) {
    const std::uint32_t number = 0x12345678;
    ASSERT_EQ(_key.write(L"number", ValueType::Dword, &number, sizeof number), 0U);

    RegistryKey reader;
    ASSERT_EQ(reader.openForReading(GetParam(), kPath), 0U);
    ValueType type = ValueType::None;
    std::uint32_t value = 0;
    std::uint32_t bytes = sizeof value;

    EXPECT_EQ(reader.read(L"number", type, &value, bytes), 0U);
    EXPECT_EQ(type, ValueType::Dword);
    EXPECT_EQ(bytes, sizeof value);
    EXPECT_EQ(value, number);
}

TEST_P(RegistryTest, AValueIsReplacedByTheNextWrite) {
    ASSERT_EQ(_key.write(L"record", ValueType::Binary, "long record", 11), 0U);
    ASSERT_EQ(_key.write(L"record", ValueType::Binary, "short", 5), 0U);

    std::array<char, 16> value{};
    std::uint32_t bytes = value.size();
    ValueType type = ValueType::None;

    EXPECT_EQ(_key.read(L"record", type, value.data(), bytes), 0U);
    EXPECT_EQ(std::string(value.data(), bytes), "short");
}

TEST_P(RegistryTest, ATooSmallBufferLearnsTheSize) {
    ASSERT_EQ(_key.write(L"record", ValueType::Binary, "0123456789", 10), 0U);

    char value[4] = {};
    std::uint32_t bytes = sizeof value;
    ValueType type = ValueType::None;

    EXPECT_EQ(_key.read(L"record", type, value, bytes), platform::kMoreData);
    EXPECT_EQ(bytes, 10U);
    EXPECT_EQ(type, ValueType::None);
}

TEST_P(RegistryTest, AnEmptyValueIsAValue) {
    ASSERT_EQ(_key.write(L"empty", ValueType::Binary, "", 0), 0U);

    char value = '-';
    std::uint32_t bytes = 1;
    ValueType type = ValueType::None;

    EXPECT_EQ(_key.read(L"empty", type, &value, bytes), 0U);
    EXPECT_EQ(bytes, 0U);
    EXPECT_EQ(type, ValueType::Binary);
}

TEST_P(RegistryTest, NamesDoNotDependOnCase) {
    ASSERT_EQ(_key.write(L"CurrCart", ValueType::Binary, "1", 1), 0U);

    RegistryKey reader;
    ASSERT_EQ(reader.openForReading(GetParam(), L"SOFTWARE\\corvane\\CONTRACT TEST"), 0U);
    char value = '-';
    std::uint32_t bytes = 1;
    ValueType type = ValueType::None;

    EXPECT_EQ(reader.read(L"CURRCART", type, &value, bytes), 0U);
    EXPECT_EQ(value, '1');
}

TEST_P(RegistryTest, AMissingValueIsFileNotFound) {
    ValueType type = ValueType::None;
    std::uint32_t bytes = 0;

    EXPECT_EQ(_key.read(L"never written", type, nullptr, bytes), platform::kFileNotFound);
}

TEST_P(RegistryTest, AMissingKeyIsFileNotFoundAndLeavesNoKeyOpen) {
    EXPECT_EQ(_key.openForReading(GetParam(), L"Software\\Corvane\\Never made"),
              platform::kFileNotFound);

    ValueType type = ValueType::None;
    std::uint32_t bytes = 0;
    EXPECT_EQ(_key.read(L"number", type, nullptr, bytes), platform::kInvalidHandleError);
}

TEST_P(RegistryTest, AKeyOpenedForReadingRefusesWrites) {
    RegistryKey reader;
    ASSERT_EQ(reader.openForReading(GetParam(), kPath), 0U);

    EXPECT_EQ(reader.write(L"number", ValueType::Binary, "1", 1), kAccessDenied);
}

TEST_P(RegistryTest, ARemovedValueIsFileNotFound) {
    ASSERT_EQ(_key.write(L"removed", ValueType::Binary, "1", 1), 0U);
    ASSERT_EQ(_key.write(L"kept", ValueType::Binary, "2", 1), 0U);

    EXPECT_EQ(_key.remove(L"removed"), 0U);

    ValueType type = ValueType::None;
    std::uint32_t bytes = 0;
    EXPECT_EQ(_key.read(L"removed", type, nullptr, bytes), platform::kFileNotFound);
    EXPECT_EQ(_key.read(L"kept", type, nullptr, bytes), 0U);
}

TEST_P(RegistryTest, AMissingValueCannotBeRemoved) {
    EXPECT_EQ(_key.remove(L"never written"), platform::kFileNotFound);
}

TEST_P(RegistryTest, AKeyOpenedForReadingRefusesToRemove) {
    ASSERT_EQ(_key.write(L"number", ValueType::Binary, "1", 1), 0U);
    RegistryKey reader;
    ASSERT_EQ(reader.openForReading(GetParam(), kPath), 0U);

    EXPECT_EQ(reader.remove(L"number"), kAccessDenied);
}

TEST_P(RegistryTest, MakingAKeyMakesThoseAboveIt) {
    ASSERT_EQ(_key.createForWriting(GetParam(), L"Software\\Corvane\\Made\\Below\\Deep"), 0U);

    RegistryKey above;
    EXPECT_EQ(above.openForReading(GetParam(), L"Software\\Corvane\\Made"), 0U);
}

TEST_P(RegistryTest, TheHivesAreApart) {
    const Hive other = GetParam() == Hive::CurrentUser ? Hive::LocalMachine : Hive::CurrentUser;
    const std::wstring path = std::wstring(L"Software\\Corvane\\Only in ") +
                              (GetParam() == Hive::CurrentUser ? L"user" : L"machine");
    ASSERT_EQ(_key.createForWriting(GetParam(), path.c_str()), 0U);

    RegistryKey elsewhere;
    EXPECT_EQ(elsewhere.openForReading(other, path.c_str()), platform::kFileNotFound);
}

INSTANTIATE_TEST_SUITE_P(Both, RegistryTest,
                         testing::Values(Hive::CurrentUser, Hive::LocalMachine));

TEST(RegistryKeyTest, WithoutAnOpenKeyEveryOperationSaysSo) {
    RegistryKey key;
    ValueType type = ValueType::None;
    std::uint32_t bytes = 0;

    EXPECT_EQ(key.read(L"number", type, nullptr, bytes), platform::kInvalidHandleError);
    EXPECT_EQ(key.write(L"number", ValueType::Binary, "", 0), platform::kInvalidHandleError);
    EXPECT_EQ(key.remove(L"number"), platform::kInvalidHandleError);
}

}  // namespace
