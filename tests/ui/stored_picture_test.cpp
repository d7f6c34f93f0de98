#include "ui/stored_picture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {

constexpr int k100Percent = 96, k125Percent = 120, k150Percent = 144, k200Percent = 192;
constexpr Rgb kBlack = 0x000000, kWhite = 0xFFFFFF, kRed = 0xFF0000, kBlue = 0x0000FF;

using Bytes = std::vector<std::uint8_t>;
using Colours = std::vector<Rgb>;

// A bitmap resource of 8 bits for each pixel with run-length codes.
class BitmapResource {
public:
    BitmapResource(int width, int height, std::initializer_list<Rgb> table, const Bytes& codes) {
        add(kHeaderBytes);
        add(static_cast<std::uint32_t>(width));
        add(static_cast<std::uint32_t>(height));
        add(8 << 16 | 1);  // bits for each pixel, planes
        add(1);            // run-length codes
        for (int unused = 0; unused < 3; ++unused)
            add(0);
        add(static_cast<std::uint32_t>(table.size()));
        add(0);
        for (const Rgb colour : table)
            add(colour);
        bytes.insert(bytes.end(), codes.begin(), codes.end());
    }
    // Writes a number of the header.
    void set(std::size_t at, std::uint32_t number) {
        for (int i = 0; i < 4; ++i)
            bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(number >> 8 * i);
    }

    static constexpr std::uint32_t kHeaderBytes = 40;
    Bytes bytes;

private:
    void add(std::uint32_t number) {
        bytes.resize(bytes.size() + 4);
        set(bytes.size() - 4, number);
    }
};

Colours scaled(const BitmapResource& resource, int dpi, Rgb face = kFaceColour) {
    return StoredPicture(resource.bytes).scaledFor(dpi, face).pixels();
}

// One line; its codes end the line and then the picture.
BitmapResource oneLine(int width, std::initializer_list<Rgb> table, Bytes codes) {
    codes.insert(codes.end(), {0, 0, 0, 1});
    return {width, 1, table, codes};
}

TEST(StoredPictureTest, IsHalfAsLargeAt100PercentAndAsItIsStoredAt200) {
    const BitmapResource banner(1494, 120, {kBlack}, {});
    const StoredPicture picture(banner.bytes);

    EXPECT_EQ(picture.sizeAt(k100Percent).width, 747);
    EXPECT_EQ(picture.sizeAt(k100Percent).height, 60);
    EXPECT_EQ(picture.sizeAt(k200Percent).width, 1494);
    EXPECT_EQ(picture.sizeAt(k200Percent).height, 120);
}

TEST(StoredPictureTest, RoundsItsSizeToTheNearestPixel) {
    const BitmapResource banner(1494, 60, {kBlack}, {});

    EXPECT_EQ(StoredPicture(banner.bytes).sizeAt(k125Percent).width, 934);   // 933.75
    EXPECT_EQ(StoredPicture(banner.bytes).sizeAt(k125Percent).height, 38);   // 37.5
    EXPECT_EQ(StoredPicture(banner.bytes).sizeAt(k150Percent).width, 1121);  // 1120.5
    EXPECT_EQ(StoredPicture(banner.bytes).sizeAt(168).width, 1307);          // 1307.25
}

TEST(StoredPictureTest, PaintsTheStoredColoursAt200Percent) {
    const BitmapResource line = oneLine(3, {kRed, 0x123456}, {1, 1, 2, 0});

    EXPECT_EQ(scaled(line, k200Percent), (Colours{0x123456, kRed, kRed}));
}

TEST(StoredPictureTest, StoresItsLinesFromTheBottomUp) {
    const BitmapResource column(1, 2, {kRed, kBlue}, {1, 0, 0, 0, 1, 1, 0, 1});

    EXPECT_EQ(scaled(column, k200Percent), (Colours{kBlue, kRed}));
}

TEST(StoredPictureTest, MixesTwoPixelsEquallyWhereTwoBecomeOne) {
    const BitmapResource line(4, 2, {0x000000, 0x102030},
                              {2, 0, 2, 1, 0, 0, 2, 0, 2, 1, 0, 0, 0, 1});
    const BitmapResource edge(2, 2, {0x000000, 0x102030}, {1, 0, 1, 1, 0, 0, 1, 0, 1, 1, 0, 1});

    EXPECT_EQ(scaled(line, k100Percent), (Colours{0x000000, 0x102030}));
    EXPECT_EQ(scaled(edge, k100Percent), (Colours{0x081018}));
}

TEST(StoredPictureTest, MixesTheFourPixelsUnderANewOne) {
    const BitmapResource square(2, 2, {0x000000, 0xC80000}, {2, 0, 0, 0, 1, 0, 1, 1, 0, 1});

    EXPECT_EQ(scaled(square, k100Percent), (Colours{0x320000}));  // 200 / 4
}

// Two thirds of the one and a third of the other: 4 pixels in 3 make shares of 3, 1 | 2, 2 | 1, 3.
TEST(StoredPictureTest, MixesByTheShareOfEachPixelWhereFourBecomeThree) {
    const BitmapResource line(4, 4, {0x000000, 0x400000}, {1, 0, 3, 1, 0, 0, 1, 0, 3, 1, 0, 0,  //
                                                           1, 0, 3, 1, 0, 0, 1, 0, 3, 1, 0, 1});

    EXPECT_EQ(scaled(line, k150Percent),
              (Colours{0x100000, 0x400000, 0x400000, 0x100000, 0x400000, 0x400000,  //
                       0x100000, 0x400000, 0x400000}));
}

TEST(StoredPictureTest, MixesLinesByTheirSharesToo) {
    const BitmapResource column(4, 4, {0x000000, 0x400000},
                                {4, 0, 0, 0, 4, 1, 0, 0, 4, 1, 0, 0, 4, 1, 0, 1});

    EXPECT_EQ(scaled(column, k150Percent),
              (Colours{0x400000, 0x400000, 0x400000, 0x400000, 0x400000, 0x400000,  //
                       0x100000, 0x100000, 0x100000}));
}

TEST(StoredPictureTest, RoundsAMixToTheNearestColour) {
    const BitmapResource half(2, 2, {0x000000, 0x010101}, {1, 0, 1, 1, 0, 0, 1, 0, 1, 1, 0, 1});
    const BitmapResource quarter(2, 2, {0x000000, 0x010101}, {2, 0, 0, 0, 1, 0, 1, 1, 0, 1});

    EXPECT_EQ(scaled(half, k100Percent), (Colours{0x010101}));
    EXPECT_EQ(scaled(quarter, k100Percent), (Colours{0x000000}));
}

TEST(StoredPictureTest, LeavesOneColourAsItIsInEverySize) {
    Bytes codes;
    for (int line = 0; line < 10; ++line)
        codes.insert(codes.end(), {10, 0, 0, 0});
    const BitmapResource square(10, 10, {0xFFEEDD}, codes);

    for (const int dpi : {k100Percent, k125Percent, k150Percent, 168, k200Percent, 288}) {
        const StoredPicture picture(square.bytes);
        const auto side = static_cast<std::size_t>(picture.sizeAt(dpi).width);
        EXPECT_EQ(scaled(square, dpi), Colours(side * side, 0xFFEEDD)) << dpi;
    }
}

TEST(StoredPictureTest, DoesNotOverflowInTheLargestPicture) {
    constexpr int kSide = 4096;
    Bytes codes;
    for (int line = 0; line < kSide; ++line) {
        for (int run = 0; run < 16; ++run)
            codes.insert(codes.end(), {255, 0});
        codes.insert(codes.end(), {16, 0, 0, 0});
    }
    const BitmapResource largest(kSide, kSide, {kWhite}, codes);
    constexpr int kSmallDpi = 1;

    EXPECT_EQ(scaled(largest, kSmallDpi), Colours(21 * 21, kWhite));
}

TEST(StoredPictureTest, ReplacesTheFaceColourBeforeItMixes) {
    const BitmapResource edge(4, 2, {kFaceColour, 0x808080}, {3, 0, 1, 1, 0, 0, 3, 0, 1, 1, 0, 1});

    EXPECT_EQ(scaled(edge, k100Percent, kBlack), (Colours{kBlack, 0x404040}));
}

TEST(StoredPictureTest, LeavesColoursLikeTheFaceColourAsTheyAre) {
    const BitmapResource line = oneLine(3, {0xF0F0F0, 0xF0F0F1, 0xEFF0F0}, {1, 0, 1, 1, 1, 2});

    EXPECT_EQ(scaled(line, k200Percent, kRed), (Colours{kRed, 0xF0F0F1, 0xEFF0F0}));
}

TEST(StoredPictureTest, IgnoresTheFourthByteOfAColour) {
    const BitmapResource line = oneLine(2, {0xAB123456, 0xAB000000 | kFaceColour}, {1, 0, 1, 1});

    EXPECT_EQ(scaled(line, k200Percent, kRed), (Colours{0x123456, kRed}));
}

TEST(StoredPictureTest, ReadsPixelsThatStandOneByOneAndTheBytesThatEvenThemOut) {
    const BitmapResource odd = oneLine(4, {kBlack, kRed, kBlue}, {0, 3, 1, 2, 1, 0, 1, 2});
    const BitmapResource even = oneLine(5, {kBlack, kRed, kBlue}, {0, 4, 1, 2, 1, 1, 1, 2});

    EXPECT_EQ(scaled(odd, k200Percent), (Colours{kRed, kBlue, kRed, kBlue}));
    EXPECT_EQ(scaled(even, k200Percent), (Colours{kRed, kBlue, kRed, kRed, kBlue}));
}

TEST(StoredPictureTest, ReadsATableOf256ColoursWhereItsSizeIsNotSaid) {
    BitmapResource line(1, 1, {}, {});
    line.bytes.resize(BitmapResource::kHeaderBytes + 256 * 4);
    line.set(BitmapResource::kHeaderBytes + 255 * 4, kRed);
    line.bytes.insert(line.bytes.end(), {1, 255, 0, 1});

    EXPECT_EQ(scaled(line, k200Percent), (Colours{kRed}));
}

// Wherever the content is cut off, what is missing gets the first colour.
TEST(StoredPictureTest, GivesTheFirstColourToPixelsWithoutACode) {
    const Colours expected{kRed, kRed, kBlue, kRed};

    EXPECT_EQ(scaled({2, 2, {kRed, kBlue}, {1, 1, 0, 0}}, k200Percent), expected);
    EXPECT_EQ(scaled({2, 2, {kRed, kBlue}, {1, 1, 0, 1, 2, 1}}, k200Percent), expected);
    EXPECT_EQ(scaled({2, 2, {kRed, kBlue}, {1, 1, 0, 2, 1, 1, 1, 1}}, k200Percent), expected);
    EXPECT_EQ(scaled({2, 2, {kRed, kBlue}, {1, 1}}, k200Percent), expected);
    EXPECT_EQ(scaled({2, 2, {kRed, kBlue}, {}}, k200Percent), Colours(4, kRed));
}

TEST(StoredPictureTest, KeepsAllThatIsTooLongForALineWithinIt) {
    const BitmapResource picture(2, 3, {kRed, kBlue, kWhite},
                                 {9, 1, 0, 0, 0, 5, 0, 1, 2, 2, 2, 0, 0, 0, 2, 2, 0, 1});

    EXPECT_EQ(scaled(picture, k200Percent), (Colours{kWhite, kWhite, kRed, kBlue, kBlue, kBlue}));
}

TEST(StoredPictureTest, GivesBlackToAColourThatIsNotInTheTable) {
    EXPECT_EQ(scaled(oneLine(1, {kRed}, {1, 255}), k200Percent), (Colours{kBlack}));
}

TEST(StoredPictureTest, IsEmptyWhereTheContentIsNoPicture) {
    const auto isEmpty = [](const Bytes& bytes) {
        const StoredPicture picture(bytes);
        return picture.sizeAt(k200Percent).width == 0 && picture.sizeAt(k200Percent).height == 0 &&
               picture.scaledFor(k200Percent, kFaceColour).pixels().empty();
    };
    const BitmapResource good = oneLine(1, {kRed}, {1, 0});
    ASSERT_FALSE(isEmpty(good.bytes));
    const auto changed = [&](std::size_t at, std::uint32_t number) {
        BitmapResource changedCopy = good;
        changedCopy.set(at, number);
        return changedCopy.bytes;
    };

    EXPECT_TRUE(isEmpty({}));
    EXPECT_TRUE(isEmpty(Bytes(good.bytes.begin(), good.bytes.begin() + 39)));
    EXPECT_TRUE(isEmpty(Bytes(good.bytes.begin(), good.bytes.begin() + 43)));  // half a colour
    EXPECT_TRUE(isEmpty(changed(0, 12)));                                      // another header
    EXPECT_TRUE(isEmpty(changed(4, 4097)));                                    // too wide
    EXPECT_TRUE(isEmpty(changed(8, 4097)));                                    // too high
    EXPECT_TRUE(isEmpty(changed(8, 0xFFFFFFFF)));                              // lines from the top
    EXPECT_TRUE(isEmpty(changed(12, 24 << 16 | 1)));                           // no table
    EXPECT_TRUE(isEmpty(changed(16, 0)));                                      // no codes
    Bytes tooManyColours = changed(32, 257);
    tooManyColours.resize(BitmapResource::kHeaderBytes + 257 * 4);
    EXPECT_TRUE(isEmpty(tooManyColours));
}

}  // namespace
