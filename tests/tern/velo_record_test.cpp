#include "tern/velo_record.h"

#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace tern;

namespace {

VeloBody bodyOf(std::string& bytes) {
    return {reinterpret_cast<unsigned char*>(bytes.data()), bytes.size()};
}

// The units of the body's next wide text.
std::u16string wideTextOf(VeloBody& body) {
    const VeloWideText text = body.readWText();
    std::u16string units;
    for (std::size_t unit = 0; unit < text.units; ++unit)
        units += static_cast<char16_t>(text.bytes[2 * unit] | text.bytes[2 * unit + 1] << 8);
    return units;
}

std::string valueOf(std::string text, const char* key) {
    return findValueIn(text.data(), key);
}

// The media name in the text, or "none" if there is no name.
std::string mediaIn(const std::string& text) {
    std::string name;
    return findMediaName(text.c_str(), name) ? name : "none";
}

}  // namespace

TEST(VeloRecordTest, HeaderIsFiveLittleEndianNumbers) {
    const VeloHeaderBytes bytes{'V', 'E', 'L', 'O', 1,  2,  3,    4,    5,    6,
                                7,   8,   9,   10,  11, 12, 0xFF, 0xFE, 0xFD, 0xFC};

    const VeloHeader header = decodedHeader(bytes);

    EXPECT_EQ(header.magic, 0x4F4C4556U);
    EXPECT_EQ(header.recordClass, 0x04030201U);
    EXPECT_EQ(header.subcode, 0x08070605U);
    EXPECT_EQ(header.printerId, 0x0C0B0A09U);
    EXPECT_EQ(header.bodyBytes, 0xFCFDFEFFU);
    EXPECT_EQ(encodedHeader(header), bytes);
}

TEST(VeloRecordTest, FieldsAreReadWithoutGapsOrAlignment) {
    std::string bytes = records::text("a") + records::number(0x80000001) +
                        records::wideText(u"b\u20AC") + records::text("");
    VeloBody body = bodyOf(bytes);

    EXPECT_STREQ(body.readText(), "a");
    EXPECT_EQ(body.readNumber(0), 0x80000001U);
    EXPECT_EQ(wideTextOf(body), u"b\u20AC");
    EXPECT_STREQ(body.readText(), "");
    EXPECT_FALSE(body.hasInput(1));
    EXPECT_TRUE(body.hasInput(0));
}

TEST(VeloRecordTest, InputEndsWithTheBody) {
    std::string bytes = "abc";
    const VeloBody body = bodyOf(bytes);

    EXPECT_TRUE(body.hasInput(3));
    EXPECT_FALSE(body.hasInput(4));
    EXPECT_FALSE(body.hasInput(static_cast<std::size_t>(-1)));
}

TEST(VeloRecordTest, TextWithoutItsNulIsEmptyAndTheCursorStays) {
    std::string bytes = "abcd";
    VeloBody body = bodyOf(bytes);

    EXPECT_STREQ(body.readText(), "");
    EXPECT_EQ(body.readNumber(0), 0x64636261U);
}

TEST(VeloRecordTest, WideTextWithoutItsZeroUnitIsEmptyAndTheCursorStays) {
    std::string bytes("a\0b\0\0", 5);  // the last unit has only one of its two bytes
    VeloBody body = bodyOf(bytes);

    EXPECT_EQ(wideTextOf(body), u"");
    EXPECT_STREQ(body.readText(), "a");
}

TEST(VeloRecordTest, NumberThatIsNotAllThereIsTheDefaultAndTheCursorStays) {
    std::string bytes = "ab";
    bytes += '\0';
    VeloBody body = bodyOf(bytes);

    EXPECT_EQ(body.readNumber(17), 17U);
    EXPECT_STREQ(body.readText(), "ab");
}

TEST(VeloRecordTest, EmptyBodyGivesDefaults) {
    VeloBody body;

    EXPECT_STREQ(body.readText(), "");
    EXPECT_EQ(wideTextOf(body), u"");
    EXPECT_EQ(body.readNumber(5), 5U);
}

TEST(VeloRecordTest, ValueStandsBetweenTheEqualsSignAndTheLineFeed) {
    EXPECT_EQ(valueOf("Model=K7400\nSerialNumber=123\nColor=black\n", "SerialNumber"), "123");
    EXPECT_EQ(valueOf("SerialNumber = 123 \r\n", "SerialNumber"), " 123 \r");
    EXPECT_EQ(valueOf("MySerialNumbers are=5\n", "SerialNumber"), "5");
}

TEST(VeloRecordTest, MissingKeyOrEqualsSignGivesAnEmptyValue) {
    EXPECT_EQ(valueOf("serialnumber=123\n", "SerialNumber"), "");
    EXPECT_EQ(valueOf("SerialNumber 123\n", "SerialNumber"), "");
    EXPECT_EQ(valueOf("", "SerialNumber"), "");
}

TEST(VeloRecordTest, EqualsSignOfALaterLineServesAKeyWithoutOne) {
    EXPECT_EQ(valueOf("SerialNumber\nColor=5\n", "SerialNumber"), "5");
}

TEST(VeloRecordTest, LastValueMayLackItsLineFeed) {
    EXPECT_EQ(valueOf("SerialNumber=123", "SerialNumber"), "123");
}

TEST(VeloRecordTest, MediaNameIsTheQuotedTextAfterDisplay) {
    EXPECT_EQ(mediaIn("DISPLAY=\"A4\""), "A4");
    EXPECT_EQ(mediaIn("INFO STATUS\r\nDISPLAY = \"Plain paper\"\r\nCODE=1"), "Plain paper");
    EXPECT_EQ(mediaIn("DISPLAY=\"\""), "UNKNOWN");
    EXPECT_EQ(mediaIn("DISPLAY=\""), "UNKNOWN");
    EXPECT_EQ(mediaIn("DISPLAY=\"A4"), "A4");
}

TEST(VeloRecordTest, MediaNameTakesThePlaceOfAnEarlierOne) {
    std::string name = "Letter";

    EXPECT_TRUE(findMediaName("DISPLAY=\"A4\"", name));

    EXPECT_EQ(name, "A4");
}

TEST(VeloRecordTest, QuoteMustStandWithinTenCharactersOfDisplay) {
    EXPECT_EQ(mediaIn("DISPLAY = \"A4\""), "A4");
    EXPECT_EQ(mediaIn("DISPLAY =  \"A4\""), "none");
    EXPECT_EQ(mediaIn("DISPLAY" + std::string(11, ' ') + "\"A4\""), "none");
    EXPECT_EQ(mediaIn("DISPLAY=A4"), "none");
}

TEST(VeloRecordTest, TextWithoutDisplayNamesNoMedia) {
    EXPECT_EQ(mediaIn("display=\"A4\""), "none");
    EXPECT_EQ(mediaIn(""), "none");
}

TEST(VeloRecordTest, MediaNameIsCutAfterEightyCharacters) {
    EXPECT_EQ(mediaIn("DISPLAY=\"" + std::string(80, 'x') + "\""), std::string(80, 'x'));
    EXPECT_EQ(mediaIn("DISPLAY=\"" + std::string(500, 'x') + "\""), std::string(80, 'x'));
}
