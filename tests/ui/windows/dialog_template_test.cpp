#include "ui/windows/dialog_template.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr std::size_t kBytes = 32;
constexpr DWORD kMirrored = WS_EX_LAYOUTRTL | WS_EX_RTLREADING;

std::vector<std::byte> templateOf(DWORD first, DWORD second, DWORD third) {
    std::vector<std::byte> bytes(kBytes);
    const DWORD words[] = {first, second, third};
    std::memcpy(bytes.data(), words, sizeof(words));
    return bytes;
}

DWORD wordAt(const std::vector<std::byte>& bytes, std::size_t index) {
    DWORD word = 0;
    std::memcpy(&word, bytes.data() + index * sizeof(word), sizeof(word));
    return word;
}

TEST(MirroredTemplate, ChangesTheThirdWordOfAnExtendedTemplate) {
    const auto mirrored = mirroredTemplate(templateOf(0xFFFF0001, 5, WS_EX_CONTROLPARENT));

    EXPECT_EQ(wordAt(mirrored, 0), 0xFFFF0001U);
    EXPECT_EQ(wordAt(mirrored, 1), 5U);
    EXPECT_EQ(wordAt(mirrored, 2), WS_EX_CONTROLPARENT | kMirrored);
}

TEST(MirroredTemplate, ChangesTheSecondWordOfAPlainTemplate) {
    const auto mirrored = mirroredTemplate(templateOf(WS_POPUP, 0, 7));

    EXPECT_EQ(wordAt(mirrored, 0), static_cast<DWORD>(WS_POPUP));
    EXPECT_EQ(wordAt(mirrored, 1), kMirrored);
    EXPECT_EQ(wordAt(mirrored, 2), 7U);
}

TEST(MirroredTemplate, LeavesTheOriginalAlone) {
    const auto original = templateOf(0xFFFF0001, 0, 0);

    const auto mirrored = mirroredTemplate(original);

    EXPECT_EQ(wordAt(original, 2), 0U);
    EXPECT_EQ(mirrored.size(), original.size());
}

TEST(MirroredTemplate, IsEmptyForBytesThatAreNoTemplate) {
    const std::vector<std::byte> bytes(sizeof(DLGTEMPLATE) - 1);

    EXPECT_TRUE(mirroredTemplate(bytes).empty());
    EXPECT_TRUE(mirroredTemplate({}).empty());
}

}  // namespace
