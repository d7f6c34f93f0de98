#include "tern/guid_text.h"

#include "tern/class_ids.h"

#include <gtest/gtest.h>

#include <cstring>

using arbor::Guid;
using tern::guidText;

TEST(GuidTextTest, ComponentClassesHaveTheKeysThatTheyAreRegisteredUnder) {
    EXPECT_EQ(guidText(tern::kTimerEventGeneratorId), L"{505cd427-e218-463b-ac41e737bd464c9}");
    EXPECT_EQ(guidText(tern::kDebugListenerId), L"{b0d2a23a-fe2d-4a03-aec5c3e2f9bea2e4}");
    EXPECT_EQ(guidText(tern::kVeloEventGeneratorId), L"{4ad54a4f-7906-4c40-bb193b778a08d4c}");
    EXPECT_EQ(guidText(tern::kVeloListenerId), L"{5db8ad6d-4d3c-4f33-bd1dbafb50401e7b}");
}

TEST(ClassIdsTest, BytesAreThoseThatThePrintPathKnows) {
    struct Row {
        const Guid& id;
        unsigned char bytes[16];
    };
    // clang-format off
    const Row kRows[] = {
        {tern::kTimerEventGeneratorId, {0x27, 0xD4, 0x5C, 0x50, 0x18, 0xE2, 0x3B, 0x46,
                                        0xAC, 0x41, 0xE7, 0x37, 0xBD, 0x04, 0x64, 0xC9}},
        {tern::kDebugListenerId,       {0x3A, 0xA2, 0xD2, 0xB0, 0x2D, 0xFE, 0x03, 0x4A,
                                        0xAE, 0xC5, 0xC3, 0xE2, 0xF9, 0xBE, 0xA2, 0xE4}},
        {tern::kVeloEventGeneratorId,  {0x4F, 0x4A, 0xD5, 0x4A, 0x06, 0x79, 0x40, 0x4C,
                                        0xBB, 0x19, 0x03, 0xB7, 0x78, 0xA0, 0x8D, 0x4C}},
        {tern::kVeloListenerId,        {0x6D, 0xAD, 0xB8, 0x5D, 0x3C, 0x4D, 0x33, 0x4F,
                                        0xBD, 0x1D, 0xBA, 0xFB, 0x50, 0x40, 0x1E, 0x7B}},
    };
    // clang-format on
    for (const Row& row : kRows)
        EXPECT_EQ(std::memcmp(&row.id, row.bytes, sizeof row.bytes), 0) << row.id.data1;
}

TEST(GuidTextTest, LeadingZerosAreLeftOut) {
    EXPECT_EQ(guidText(Guid{}), L"{0-0-0-00000000}");
    EXPECT_EQ(guidText(Guid{0x1A, 0x0B, 0x00C0, {0, 1, 0x10, 0x0F, 0xFF, 0, 0, 2}}),
              L"{1a-b-c0-0110fff002}");
}
