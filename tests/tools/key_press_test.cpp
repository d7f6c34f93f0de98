#include "tools/printpath/key_press.h"

#include <gtest/gtest.h>

namespace printpath {
namespace {

TEST(KeyPress, LettersAndDigitsKeepTheirCase) {
    EXPECT_EQ(parseKey("H")->character, 'H');
    EXPECT_EQ(parseKey("h")->character, 'h');
    EXPECT_EQ(parseKey("7")->character, '7');
}

TEST(KeyPress, NamedKeysHaveNoCharacter) {
    EXPECT_EQ(parseKey("esc")->named, NamedKey::Escape);
    EXPECT_EQ(parseKey("f4")->named, NamedKey::F4);
    EXPECT_EQ(parseKey("enter")->character, 0);
}

TEST(KeyPress, HeldKeysStandInFrontInAnyOrder) {
    const auto key = parseKey("alt+shift+tab");

    ASSERT_TRUE(key);
    EXPECT_TRUE(key->alt);
    EXPECT_TRUE(key->shift);
    EXPECT_FALSE(key->control);
    EXPECT_EQ(key->named, NamedKey::Tab);
}

TEST(KeyPress, AnythingElseIsNoKey) {
    for (const char* wrong : {"", "alt+", "ab", "alt+alt+u", "Esc", "+", "alt u", "f5", "\xC3\xA4"})
        EXPECT_FALSE(parseKey(wrong)) << wrong;
}

}  // namespace
}  // namespace printpath
