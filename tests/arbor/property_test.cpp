#include "arbor/property.h"

#include "arbor/null_property.h"
#include "tests/support/test_properties.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

using arbor::IProperty;
using arbor::NullProperty;
using arbor::Property;
using test::AnyProperty;

namespace {

using Owned = std::unique_ptr<IProperty>;

constexpr double kTwoTo63 = 9223372036854775808.0;

Owned narrow(const char* text) {
    return Owned(Property::createString(text, std::strlen(text)));
}
Owned wide(const wchar_t* text) {
    return Owned(Property::createWString(text, std::wcslen(text)));
}
Owned number(std::int32_t value) {
    return Owned(Property::createInt(value));
}
Owned buffer(const char* bytes, std::size_t count) {
    return Owned(Property::createOpaque(bytes, count));
}

// A fallback for every conversion. No property of the tests has one of these values.
struct Fallbacks {
    IProperty::Functor<int> integer{-11};
    IProperty::Functor<float> real{-1.5F};
    IProperty::Functor<double> wideReal{-2.5};
    IProperty::Functor<std::uint64_t> word{77};
    IProperty::StringFunctor text{"fallback"};
};

// Records the arguments that a conversion gives to its fallback.
template <typename Functor, typename Result>
struct RecordingFunctor : Functor {
    Result& operator()(std::uint32_t type, std::uint64_t word, std::uint64_t size) override {
        told = {type, word, size};
        return Functor::operator()(type, word, size);
    }
    std::array<std::uint64_t, 3> told{};
};

}  // namespace

TEST(PropertyTest, TypeCodesAreTheOnesOfTheWire) {
    EXPECT_EQ(arbor::PT_NULL, 1U);
    EXPECT_EQ(arbor::PT_STRING, 2U);
    EXPECT_EQ(arbor::PT_WSTRING, 3U);
    EXPECT_EQ(arbor::PT_OPAQUE, 4U);
    EXPECT_EQ(arbor::PT_INT, 5U);
    EXPECT_EQ(arbor::PT_FLOAT, 6U);
    EXPECT_EQ(arbor::PT_DOUBLE, 7U);
    EXPECT_EQ(arbor::PT_UINT64, 8U);
}

TEST(PropertyTest, CreatorsGiveTheTypeOfTheirValue) {
    EXPECT_EQ(narrow("a")->getType(), arbor::PT_STRING);
    EXPECT_EQ(wide(L"a")->getType(), arbor::PT_WSTRING);
    EXPECT_EQ(number(1)->getType(), arbor::PT_INT);
    EXPECT_EQ(buffer("a", 1)->getType(), arbor::PT_OPAQUE);
    EXPECT_EQ(Owned(Property::createPointer(nullptr))->getType(), arbor::PT_OPAQUE);
}

TEST(PropertyTest, TextIsReadAsNumberInAutomaticBase) {
    struct Row {
        const char* text;
        const wchar_t* wideText;
        std::int32_t number;
    };
    // clang-format off
    constexpr Row kRows[] = {
        {"12abc",       L"12abc",       12},
        {"0x10",        L"0x10",        16},
        {"0X1f",        L"0X1f",        31},
        {"010",         L"010",         8},
        {"",            L"",            0},
        {"99999999999", L"99999999999", -1},
        {"4294967295",  L"4294967295",  -1},
        {"4294967296",  L"4294967296",  -1},
        {"2147483648",  L"2147483648",  std::numeric_limits<std::int32_t>::min()},
        {"-1",          L"-1",          -1},
        {" \t\r\n +7",  L" \t\r\n +7",  7},
        {"-0x10",       L"-0x10",       -16},
        {"08",          L"08",          0},
        {"0x",          L"0x",          0},
        {"0xg",         L"0xg",         0},
        {"abc",         L"abc",         0},
        {"- 5",         L"- 5",         0},
        {"3.5",         L"3.5",         3},
    };
    // clang-format on
    for (const Row& row : kRows) {
        EXPECT_EQ(narrow(row.text)->toInt(), row.number) << row.text;
        EXPECT_EQ(wide(row.wideText)->toInt(), row.number) << row.text;
    }
}

TEST(PropertyTest, OnlyToIntReadsNumbersFromText) {
    for (const Owned& text : {narrow("3.5"), wide(L"3.5")}) {
        Fallbacks fallback;

        EXPECT_EQ(text->toInt(), 3);
        EXPECT_EQ(text->toFloat(), 0.0F);
        EXPECT_EQ(text->toDouble(), 0.0);
        EXPECT_EQ(text->toUInt64(), 0U);
        EXPECT_EQ(text->toInt(fallback.integer), 3);
        EXPECT_EQ(text->toFloat(fallback.real), -1.5F);
        EXPECT_EQ(text->toDouble(fallback.wideReal), -2.5);
        EXPECT_EQ(text->toUInt64(fallback.word), 77U);
    }
}

TEST(PropertyTest, TextReadsAsItself) {
    EXPECT_EQ(narrow("K7400")->toString(), "K7400");
    EXPECT_EQ(wide(L"K7400")->toString(), "K7400");
}

TEST(PropertyTest, TextIsCopiedAsFarAsItsLengthAndTerminated) {
    const Owned text(Property::createString("abcdef", 3));
    const Owned wideText(Property::createWString(L"abcdef", 3));

    EXPECT_STREQ(static_cast<const char*>(text->getData()), "abc");
    EXPECT_STREQ(static_cast<const wchar_t*>(wideText->getData()), L"abc");
}

TEST(PropertyTest, UnitsAtAnyAddressBecomeATerminatedWideText) {
    // A little-endian unit each: Greek omega, a letter, the last of all units; then one too many.
    constexpr unsigned char kBytes[] = {0, 0xA9, 0x03, 'x', 0, 0xFF, 0xFF, 'y', 0};

    const Owned text(Property::createUtf16(kBytes + 1, 3));

    EXPECT_EQ(text->getType(), arbor::PT_WSTRING);
    EXPECT_STREQ(static_cast<const wchar_t*>(text->getData()), L"\u03A9x\xFFFF");
}

TEST(PropertyTest, NoUnitsBecomeAnEmptyWideText) {
    const Owned text(Property::createUtf16(nullptr, 0));

    EXPECT_STREQ(static_cast<const wchar_t*>(text->getData()), L"");
}

TEST(PropertyTest, TextAsStringEndsAtItsFirstNul) {
    EXPECT_EQ(Owned(Property::createString("ab\0cd", 5))->toString(), "ab");
    EXPECT_EQ(Owned(Property::createWString(L"ab\0cd", 5))->toString(), "ab");
}

TEST(PropertyTest, WideTextAsStringIsCutAtTheConversionLimit) {
    const std::wstring longText(40000, L'x');

    EXPECT_EQ(wide(longText.c_str())->toString(), std::string(32767, 'x'));
    EXPECT_EQ(wide(longText.substr(0, 32768).c_str())->toString(), std::string(32767, 'x'));
    EXPECT_EQ(wide(longText.substr(0, 32767).c_str())->toString(), std::string(32767, 'x'));
}

TEST(PropertyTest, WideTextWhoseBytesOverflowHasANullText) {
    const Owned text(
        Property::createWString(L"a", std::numeric_limits<std::size_t>::max() / sizeof(wchar_t)));

    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->getData(), nullptr);
    EXPECT_EQ(text->getType(), arbor::PT_WSTRING);
}

TEST(PropertyTest, NullTextReadsAsEmpty) {
    const AnyProperty text(arbor::PT_STRING, 0);
    const AnyProperty wideText(arbor::PT_WSTRING, 0);

    EXPECT_EQ(text.toString(), "");
    EXPECT_EQ(text.toInt(), 0);
    EXPECT_EQ(wideText.toString(), "");
    EXPECT_EQ(wideText.toInt(), 0);
}

TEST(PropertyTest, IntConvertsToEveryNumberAndText) {
    const Owned seven = number(-7);

    EXPECT_EQ(seven->toInt(), -7);
    EXPECT_EQ(seven->toFloat(), -7.0F);
    EXPECT_EQ(seven->toDouble(), -7.0);
    EXPECT_EQ(seven->toUInt64(), 0xFFFFFFFFFFFFFFF9U);
    EXPECT_EQ(seven->toString(), "-7");
}

TEST(PropertyTest, FloatConvertsToEveryNumberAndText) {
    EXPECT_EQ(AnyProperty(2.9F).toInt(), 2);
    EXPECT_EQ(AnyProperty(-2.9F).toInt(), -2);
    EXPECT_EQ(AnyProperty(2.5F).toFloat(), 2.5F);
    EXPECT_EQ(AnyProperty(2.5F).toDouble(), 2.5);
    EXPECT_EQ(AnyProperty(2.9F).toUInt64(), 2U);
    EXPECT_EQ(AnyProperty(2.5F).toString(), "2.5");
}

TEST(PropertyTest, DoubleConvertsToEveryNumberAndText) {
    EXPECT_EQ(AnyProperty(2.9).toInt(), 2);
    EXPECT_EQ(AnyProperty(-2.9).toInt(), -2);
    EXPECT_EQ(AnyProperty(2.5).toFloat(), 2.5F);
    EXPECT_EQ(AnyProperty(0.1).toDouble(), 0.1);
    EXPECT_EQ(AnyProperty(2.9).toUInt64(), 2U);
    EXPECT_EQ(AnyProperty(0.1).toString(), "0.1");
}

TEST(PropertyTest, RealNumberOutsideInt32GivesTheSmallestInt) {
    constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

    EXPECT_EQ(AnyProperty(1e20F).toInt(), kSmallest);
    EXPECT_EQ(AnyProperty(-1e20F).toInt(), kSmallest);
    EXPECT_EQ(AnyProperty(1e20).toInt(), kSmallest);
    EXPECT_EQ(AnyProperty(2147483648.0).toInt(), kSmallest);
    EXPECT_EQ(AnyProperty(-2147483649.0).toInt(), kSmallest);
    EXPECT_EQ(AnyProperty(std::nan("")).toInt(), kSmallest);
}

TEST(PropertyTest, RealNumberAtTheEdgeOfInt32IsTruncated) {
    EXPECT_EQ(AnyProperty(2147483647.9).toInt(), 2147483647);
    EXPECT_EQ(AnyProperty(-2147483648.9).toInt(), std::numeric_limits<std::int32_t>::min());
}

TEST(PropertyTest, RealNumberUpToTwoTo63IsTruncatedAsSigned) {
    EXPECT_EQ(AnyProperty(-1.5).toUInt64(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(AnyProperty(4611686018427387904.0).toUInt64(), std::uint64_t{1} << 62);
    EXPECT_EQ(AnyProperty(kTwoTo63).toUInt64(), std::uint64_t{1} << 63);
    EXPECT_EQ(AnyProperty(-1e30).toUInt64(), std::uint64_t{1} << 63);
}

TEST(PropertyTest, RealNumberAboveTwoTo63KeepsItsValue) {
    EXPECT_EQ(AnyProperty(kTwoTo63 + 2048).toUInt64(), (std::uint64_t{1} << 63) + 2048);
    EXPECT_EQ(AnyProperty(1.5F * static_cast<float>(kTwoTo63)).toUInt64(), std::uint64_t{3} << 62);
}

TEST(PropertyTest, UnsignedConvertsToEveryNumberAndText) {
    const AnyProperty largest(std::numeric_limits<std::uint64_t>::max());
    const AnyProperty mixed(std::uint64_t{0x123456789ABCDEF0});

    EXPECT_EQ(mixed.toInt(), static_cast<std::int32_t>(0x9ABCDEF0U));
    EXPECT_EQ(largest.toFloat(), 18446744073709551616.0F);
    EXPECT_EQ(largest.toDouble(), 18446744073709551616.0);
    EXPECT_EQ(largest.toUInt64(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(largest.toString(), "18446744073709551615");
}

TEST(PropertyTest, RealNumbersReadAsTextWithSixDigits) {
    struct Row {
        double value;
        const char* text;
    };
    constexpr Row kRows[] = {{0.0, "0"},      {100000.0, "100000"},       {1000000.0, "1e+06"},
                             {1e-5, "1e-05"}, {0.0001, "0.0001"},         {1.0 / 3, "0.333333"},
                             {-2.5, "-2.5"},  {1234567.0, "1.23457e+06"}, {1e100, "1e+100"}};
    for (const Row& row : kRows) {
        EXPECT_EQ(AnyProperty(row.value).toString(), row.text);
    }
    EXPECT_EQ(AnyProperty(0.1F).toString(), "0.1");
}

TEST(PropertyTest, WhatIsNoValueConvertsByTheFallback) {
    int target = 0;
    const Owned pointer(Property::createPointer(&target));
    const Owned bytes = buffer("abc", 3);
    const AnyProperty unknown(9, 5);
    const AnyProperty zeroType(0, 5);

    for (const IProperty* property :
         {static_cast<const IProperty*>(pointer.get()), static_cast<const IProperty*>(bytes.get()),
          static_cast<const IProperty*>(&unknown), static_cast<const IProperty*>(&zeroType),
          static_cast<const IProperty*>(&NullProperty::instance())}) {
        Fallbacks fallback;
        std::string out;

        EXPECT_EQ(property->toInt(fallback.integer), -11);
        EXPECT_EQ(property->toFloat(fallback.real), -1.5F);
        EXPECT_EQ(property->toDouble(fallback.wideReal), -2.5);
        EXPECT_EQ(property->toUInt64(fallback.word), 77U);
        EXPECT_EQ(&property->toString(out, fallback.text), &out);
        EXPECT_EQ(out, "fallback");
    }
}

TEST(PropertyTest, ValuesConvertWithoutAskingTheFallback) {
    Fallbacks fallback;
    std::string out;

    EXPECT_EQ(narrow("K7400")->toString(out, fallback.text), "K7400");
    EXPECT_EQ(wide(L"K7401")->toString(out, fallback.text), "K7401");
    EXPECT_EQ(number(-7)->toString(out, fallback.text), "-7");
    EXPECT_EQ(number(-7)->toInt(fallback.integer), -7);
}

TEST(PropertyTest, NullTextReadsAsEmptyIntoAGivenTextToo) {
    for (const std::uint32_t type : {arbor::PT_STRING, arbor::PT_WSTRING}) {
        const AnyProperty nothing(type, 0);
        Fallbacks fallback;
        std::string out = "before";

        EXPECT_EQ(nothing.toString(out, fallback.text), "");
    }
}

TEST(PropertyTest, WhatIsNoValueConvertsToZeroWithoutAFallback) {
    const Owned bytes = buffer("abc", 3);

    EXPECT_EQ(bytes->toInt(), 0);
    EXPECT_EQ(bytes->toFloat(), 0.0F);
    EXPECT_EQ(bytes->toDouble(), 0.0);
    EXPECT_EQ(bytes->toUInt64(), 0U);
}

TEST(PropertyTest, FallbackIsToldTypeWordAndSize) {
    const Owned bytes = buffer("abc", 3);
    RecordingFunctor<IProperty::Functor<int>, int> integer;
    RecordingFunctor<IProperty::Functor<float>, float> real;
    RecordingFunctor<IProperty::Functor<double>, double> wideReal;
    RecordingFunctor<IProperty::Functor<std::uint64_t>, std::uint64_t> word;
    RecordingFunctor<IProperty::StringFunctor, std::string> text;
    std::string out;

    static_cast<void>(bytes->toInt(integer));
    static_cast<void>(bytes->toFloat(real));
    static_cast<void>(bytes->toDouble(wideReal));
    static_cast<void>(bytes->toUInt64(word));
    bytes->toString(out, text);

    const std::array<std::uint64_t, 3> expected{
        arbor::PT_OPAQUE, reinterpret_cast<std::uintptr_t>(bytes->getData()), 3};
    EXPECT_EQ(integer.told, expected);
    EXPECT_EQ(real.told, expected);
    EXPECT_EQ(wideReal.told, expected);
    EXPECT_EQ(word.told, expected);
    EXPECT_EQ(text.told, expected);
}

TEST(PropertyTest, PointerReadsAsTypeAndSixteenHexadecimalDigits) {
    const AnyProperty pointer(arbor::PT_OPAQUE, 0x1A2B3C);

    EXPECT_EQ(pointer.toString(), "type:4 0x00000000001A2B3C");
    EXPECT_EQ(AnyProperty(12, 0xFEDCBA9876543210).toString(), "type:12 0xFEDCBA9876543210");
}

TEST(PropertyTest, BufferReadsAsTypeAndItsAddress) {
    const Owned bytes = buffer("abc", 3);
    const AnyProperty pointer(arbor::PT_OPAQUE, reinterpret_cast<std::uintptr_t>(bytes->getData()));

    EXPECT_EQ(bytes->toString(), pointer.toString());
}

TEST(PropertyTest, FreshStringFunctorAnswersAnEmptyText) {
    IProperty::StringFunctor fresh;
    std::string out = "before";

    NullProperty::instance().toString(out, fresh);

    EXPECT_EQ(out, "");
}

TEST(PropertyTest, NumberIsItsOwnData) {
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(number(5)->getData()), 5U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(AnyProperty(1.0F).getData()), 0x3F800000U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(AnyProperty(std::uint64_t{9}).getData()), 9U);
}

TEST(PropertyTest, PointerIsKeptAsItIsAndNotOwned) {
    int target = 42;
    {
        const Owned pointer(Property::createPointer(&target));
        EXPECT_EQ(pointer->getData(), &target);
    }
    EXPECT_EQ(target, 42);
}
