#include "tern/guid_text.h"

#include "tern/class_ids.h"

#include <gtest/gtest.h>

using arbor::Guid;
using tern::guidText;

TEST(GuidTextTest, ComponentClassesHaveTheKeysThatTheyAreRegisteredUnder) {
    EXPECT_EQ(guidText(tern::kTimerEventGeneratorId), L"{505cd427-e218-463b-ac41e737bd464c9}");
    EXPECT_EQ(guidText(tern::kDebugListenerId), L"{b0d2a23a-fe2d-4a03-aec5c3e2f9bea2e4}");
    EXPECT_EQ(guidText(tern::kVeloEventGeneratorId), L"{4ad54a4f-7906-4c40-bb193b778a08d4c}");
    EXPECT_EQ(guidText(tern::kVeloListenerId), L"{5db8ad6d-4d3c-4f33-bd1dbafb50401e7b}");
}

TEST(GuidTextTest, LeadingZerosAreLeftOut) {
    EXPECT_EQ(guidText(Guid{}), L"{0-0-0-00000000}");
    EXPECT_EQ(guidText(Guid{0x1A, 0x0B, 0x00C0, {0, 1, 0x10, 0x0F, 0xFF, 0, 0, 2}}),
              L"{1a-b-c0-0110fff002}");
}
