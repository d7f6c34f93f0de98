#include "tools/printpath/record_bytes.h"

#include <gtest/gtest.h>

#include <numeric>

namespace printpath {
namespace {

using namespace std::string_literals;

TEST(RecordBytes, HeaderAndBodyFollowEachOtherInLittleEndianOrder) {
    std::string body;
    appendNumber(body, 41100);

    EXPECT_EQ(recordBytes({2, 3, 0x01020304}, body),
              "VELO\x02\0\0\0\x03\0\0\0\x04\x03\x02\x01\x04\0\0\0\x8C\xA0\0\0"s);
}

TEST(RecordBytes, TextsEndWithTheirNul) {
    std::string body;
    appendText(body, "ab");
    appendWideText(body, u"a\u20AC");

    EXPECT_EQ(body, "ab\0a\0\xAC\x20\0\0"s);
}

TEST(RecordBytes, ARecordCanLieAboutItsLength) {
    EXPECT_EQ(recordBytes({0, 0, 0}, "x", 0x200).substr(16), "\0\x02\0\0x"s);
}

TEST(RecordBytes, PiecesMakeUpTheRecordAgain) {
    const std::string record = recordBytes({1, 0, 7}, "0123456789");
    for (const WriteAs as :
         {WriteAs::OneMessage, WriteAs::HeaderAndBody, WriteAs::SingleBytes, WriteAs::Chunks}) {
        const auto pieces = splitForWriting(record, as, 7);
        EXPECT_EQ(std::accumulate(pieces.begin(), pieces.end(), std::string()), record);
    }
}

TEST(RecordBytes, EachWayOfWritingHasItsPieces) {
    const std::string record = recordBytes({1, 0, 7}, "0123456789");

    EXPECT_EQ(splitForWriting(record, WriteAs::OneMessage, 1).size(), 1U);
    EXPECT_EQ(splitForWriting(record, WriteAs::SingleBytes, 1).size(), 30U);
    EXPECT_EQ(splitForWriting(record, WriteAs::Chunks, 7).size(), 5U);
    const auto two = splitForWriting(record, WriteAs::HeaderAndBody, 1);
    ASSERT_EQ(two.size(), 2U);
    EXPECT_EQ(two[0].size(), kRecordHeaderBytes);
}

TEST(RecordBytes, ARecordCutWithinItsHeaderIsOnePiece) {
    EXPECT_EQ(splitForWriting("VELO", WriteAs::HeaderAndBody, 1).size(), 1U);
    EXPECT_EQ(splitForWriting("", WriteAs::SingleBytes, 1).size(), 1U);
}

}  // namespace
}  // namespace printpath
