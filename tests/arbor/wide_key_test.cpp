#include "arbor/wide_key.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

using arbor::WideKey;

TEST(WideKeyTest, KeyIsReadToItsTerminatorAndNoFurther) {
    constexpr char kKey[] = "a block that ends with its key";
    const std::unique_ptr<char[]> block(new char[sizeof kKey]);
    std::memcpy(block.get(), kKey, sizeof kKey);

    EXPECT_STREQ(WideKey(block.get()).text(), L"a block that ends with its key");
}

TEST(WideKeyTest, EveryPlainCharacterStandsForItself) {
    for (char c = 1; c != 0x7F; ++c) {
        const char key[] = {'k', c, '\0'};
        const wchar_t wide[] = {L'k', static_cast<wchar_t>(c), L'\0'};
        EXPECT_STREQ(WideKey(key).text(), wide);
    }
}

TEST(WideKeyTest, EmptyKeyIsEmpty) {
    EXPECT_STREQ(WideKey("").text(), L"");
}

TEST(WideKeyTest, LongKeyIsCutAtTheConversionLimit) {
    constexpr std::size_t kLongest = 32767;
    const std::string key(kLongest + 2, 'k');

    for (const std::size_t length : {kLongest, kLongest + 1, kLongest + 2})
        EXPECT_EQ(WideKey(key.substr(0, length).c_str()).text(), std::wstring(kLongest, L'k'));
}
