#include "platform/shell_argument.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using platform::shellArgument;

TEST(ShellArgumentTest, AQuotationMarkCannotEndTheArgument) {
    EXPECT_EQ(shellArgument(L"https://a.test/?x=\" --load-extension=\"C:"),
              L"https://a.test/?x=%22%20--load-extension=%22C:");
}

TEST(ShellArgumentTest, BlanksAndControlCharactersAreEscaped) {
    EXPECT_EQ(shellArgument(L"a b\tc\r\nd"), L"a%20b%09c%0D%0Ad");
    EXPECT_EQ(shellArgument(std::wstring(L"a\0b", 3)), L"a%00b");
    EXPECT_EQ(shellArgument(L"\x01\x1F\x7F\x80\x9F"), L"%01%1F%7F%80%9F");
}

TEST(ShellArgumentTest, EveryOtherCharacterStays) {
    const std::wstring address =
        L"https://a.test/!#$%&'()*+,-./:;<=>?@[\\]^_`{|}~%41%\x00A0\x00FC\x20AC";

    EXPECT_EQ(shellArgument(address), address);
}

}  // namespace
