#include "printer/media_types.h"

#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace {

// Every name with its code, in alphabetical order.
const std::map<std::string, int> kExpected = {
    {"Bond", 318},       {"Cardstock", 309},  {"Colored", 317}, {"Envelope", 314},
    {"Label", 312},      {"Letterhead", 313}, {"Light", 307},   {"Midweight", 308},
    {"Normal", 301},     {"OHT", 311},        {"Premium", 306}, {"Preprinted", 315},
    {"Prepunched", 316}, {"QVAllinone", 304}, {"QVJL", 305},    {"QVMultipurpose", 302},
    {"QVOffice", 303},   {"Recycled", 319},   {"Rough", 320},   {"Thick", 309},
    {"Thick2", 310},     {"Vellum", 321},
};

TEST(MediaTypesTest, EveryNameOfThePrinterHasItsCode) {
    ASSERT_EQ(kExpected.size(), 22U);
    for (const auto& [name, code] : kExpected)
        EXPECT_EQ(TranslateMediaType(name.c_str()), code) << name;
}

TEST(MediaTypesTest, ANameInAnotherCaseIsPlainPaper) {
    EXPECT_EQ(TranslateMediaType("normal"), 301);
    EXPECT_EQ(TranslateMediaType("THICK2"), 301);
    EXPECT_EQ(TranslateMediaType("oHT"), 301);
}

TEST(MediaTypesTest, ANameThatGoesOnOrStopsShortIsPlainPaper) {
    EXPECT_EQ(TranslateMediaType("Thick2x"), 301);
    EXPECT_EQ(TranslateMediaType("Thic"), 301);
    EXPECT_EQ(TranslateMediaType("Vellum "), 301);
    EXPECT_EQ(TranslateMediaType(""), 301);
    EXPECT_EQ(TranslateMediaType(nullptr), 301);
}

TEST(MediaTypesTest, TheNameIsTraced) {
    const TraceLines trace;

    TranslateMediaType("QVJL");
    TranslateMediaType("50% %s");

    EXPECT_EQ(trace.all(), (std::vector<std::string>{"VELO TranslateMediaType mt='QVJL'",
                                                     "VELO TranslateMediaType mt='50% %s'"}));
}

TEST(MediaTypesTest, AVeryLongNameIsPlainPaper) {
    EXPECT_EQ(TranslateMediaType(std::string(100000, 'N').c_str()), 301);
}

TEST(MediaTypesTest, PlainPaperIsCurrentBeforeTheFirstReportAndThenTheLastReport) {
    EXPECT_EQ(currentMediaType(), 301);

    setCurrentMediaType(312);
    EXPECT_EQ(currentMediaType(), 312);

    setCurrentMediaType(301);
    EXPECT_EQ(currentMediaType(), 301);
}

TEST(MediaTypesTest, TheTextOfAMediaCodeIs300MoreWhereThatIsAMedium) {
    std::set<int> codes;
    for (const auto& [name, code] : kExpected)
        codes.insert(code);
    for (int mediaCode = -99; mediaCode <= 99; ++mediaCode) {
        const int text = 300 + mediaCode;
        EXPECT_EQ(mediaTextOfCode(mediaCode), codes.count(text) != 0 ? text : 301) << mediaCode;
    }
    EXPECT_EQ(mediaTextOfCode(0x7FFFFFFF), 301);
    EXPECT_EQ(mediaTextOfCode(-0x7FFFFFFF - 1), 301);
}

}  // namespace
