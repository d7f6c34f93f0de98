#include "arbor/property_holder.h"

#include "arbor/key.h"
#include "arbor/null_property.h"
#include "arbor/property.h"
#include "arbor/property_text.h"
#include "arbor/scoped_lock.h"
#include "tests/support/test_properties.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

using arbor::IProperty;
using arbor::Key;
using arbor::NullProperty;
using arbor::Property;
using arbor::PropertyHolder;
using test::AnyProperty;
using test::CountedProperty;

namespace {

// Gives tests access to the symbols, which no public operation of a holder returns.
class OpenHolder : public PropertyHolder {
public:
    [[nodiscard]] int symbolOf(const wchar_t* key) const {
        const arbor::ScopedLock lock(*this);
        return _entries.symbolOf(key);
    }
    [[nodiscard]] std::size_t size() const {
        const arbor::ScopedLock lock(*this);
        return _entries.size();
    }
    // Where the text of the key stands that is first, second, ... in the order of the keys.
    [[nodiscard]] const wchar_t* storedKey(int index) const {
        const wchar_t* found = nullptr;
        const arbor::ScopedLock lock(*this);
        _entries.forEach([&](std::wstring_view key, int, const IProperty*) {
            if (index-- == 0) found = key.data();
        });
        return found;
    }
};

constexpr std::uint64_t kUntouched = 999;

}  // namespace

TEST(PropertyHolderTest, AbsentKeyReadsAsTheNullProperty) {
    const PropertyHolder bag{};

    EXPECT_EQ(bag.getProperty(L"key"), &NullProperty::instance());
    EXPECT_FALSE(bag.hasProperty(L"key"));
}

TEST(PropertyHolderTest, IntOfAnAbsentKeyIsTheDefault) {
    const PropertyHolder bag{};

    EXPECT_EQ(bag.getInt(L"key", 17), 17);
}

TEST(PropertyHolderTest, IntOfATextIsParsedInItsBase) {
    PropertyHolder bag;
    bag.setString(L"key", "0x20");

    EXPECT_EQ(bag.getInt(L"key", 17), 32);
}

TEST(PropertyHolderTest, IntOfAPointerIsZeroAndNotTheDefault) {
    PropertyHolder bag;
    bag.setPointer(L"key", &bag);

    EXPECT_EQ(bag.getInt(L"key", 17), 0);
}

TEST(PropertyHolderTest, StringOfAnAbsentKeyIsTheDefault) {
    const PropertyHolder bag{};

    EXPECT_EQ(bag.getString(L"key", "default"), "default");
}

TEST(PropertyHolderTest, StringOfAnIntIsItsDecimal) {
    PropertyHolder bag;
    bag.setInt(L"key", -5);

    EXPECT_EQ(bag.getString(L"key", "default"), "-5");
}

TEST(PropertyHolderTest, StringOfABufferIsTypeAndAddress) {
    PropertyHolder bag;
    bag.setOpaque(L"key", "abc", 3);

    EXPECT_EQ(bag.getString(L"key", "default"), bag.getProperty(L"key")->toString());
    EXPECT_EQ(bag.getString(L"key", "default").substr(0, 9), "type:4 0x");
}

TEST(PropertyHolderTest, OpaqueOfAnIntIsTheDefaultAndLeavesTheSize) {
    PropertyHolder bag;
    bag.setInt(L"key", 5);
    std::uint64_t bytes = kUntouched;

    EXPECT_EQ(bag.getOpaque(L"key", &bytes, &bag), &bag);
    EXPECT_EQ(bytes, kUntouched);
}

TEST(PropertyHolderTest, OpaqueOfAnAbsentKeyIsTheDefaultAndLeavesTheSize) {
    PropertyHolder bag;
    std::uint64_t bytes = kUntouched;

    EXPECT_EQ(bag.getOpaque(L"key", &bytes, &bag), &bag);
    EXPECT_EQ(bytes, kUntouched);
}

TEST(PropertyHolderTest, OpaqueOfABufferGivesItsBytesAndSize) {
    PropertyHolder bag;
    bag.setOpaque(L"key", "abc", 3);
    std::uint64_t bytes = kUntouched;

    const void* data = bag.getOpaque(L"key", &bytes, nullptr);

    ASSERT_EQ(bytes, 3U);
    EXPECT_EQ(std::memcmp(data, "abc", 3), 0);
}

TEST(PropertyHolderTest, OpaqueOfAPointerGivesItAndLeavesTheSize) {
    PropertyHolder bag;
    bag.setPointer(L"key", &bag);
    std::uint64_t bytes = kUntouched;

    EXPECT_EQ(bag.getOpaque(L"key", &bytes, nullptr), &bag);
    EXPECT_EQ(bytes, kUntouched);
    EXPECT_EQ(bag.getPointer(L"key", nullptr), &bag);
}

TEST(PropertyHolderTest, OpaqueOfATextIsTheDefaultAndLeavesTheSize) {
    PropertyHolder bag;
    bag.setString(L"key", "text");
    std::uint64_t bytes = kUntouched;

    EXPECT_EQ(bag.getOpaque(L"key", &bytes, &bag), &bag);
    EXPECT_EQ(bytes, kUntouched);
}

TEST(PropertyHolderTest, OpaqueOfABufferWithAnotherTypeCodeIsTheDefaultButItsSizeIsTold) {
    PropertyHolder bag;
    bag.adoptProperty(L"key", new test::TypedBuffer(arbor::PT_STRING, "abc", 3));
    std::uint64_t bytes = kUntouched;

    EXPECT_EQ(bag.getOpaque(L"key", &bytes, &bag), &bag);
    EXPECT_EQ(bytes, 3U);
}

TEST(PropertyHolderTest, NullPropertyOfTheProcessIsNeverTakenOver) {
    OpenHolder bag;
    bag.setInt(L"present", 7);

    for (const wchar_t* key : {L"absent", L"present"}) {
        EXPECT_FALSE(bag.adoptProperty(key, &NullProperty::instance()));
        EXPECT_FALSE(bag.setPropertyAndDelete(key, &NullProperty::instance()));
        EXPECT_FALSE(bag.setPropertyAndDelete(key, bag.getProperty(L"absent")));
    }

    EXPECT_EQ(bag.size(), 1U);
    EXPECT_EQ(bag.getInt(L"present", 0), 7);
    EXPECT_TRUE(NullProperty::instance().isNull());
}

TEST(PropertyHolderTest, PropertyMayBeStoredAgainUnderItsOwnKey) {
    PropertyHolder bag;
    bag.setString(L"text", "text");
    bag.setInt(L"number", 5);

    for (const wchar_t* key : {L"text", L"number"}) {
        EXPECT_TRUE(bag.adoptProperty(key, bag.getProperty(key)));
        EXPECT_TRUE(bag.setProperty(key, bag.getProperty(key)));
        EXPECT_TRUE(bag.setPropertyAndDelete(key, bag.getProperty(key)));
    }

    EXPECT_EQ(bag.getString(L"text", ""), "text");
    EXPECT_EQ(bag.getInt(L"number", 0), 5);
}

TEST(PropertyHolderTest, ReplacedAndRemovedPropertiesAreDestroyedWithoutTheLock) {
    int destroyedUnlocked = 0;
    PropertyHolder bag;
    const AnyProperty other(2.5);

    for (const wchar_t* key : {L"adopted", L"set", L"removed"})
        bag.adoptProperty(key, new test::LockProbe(bag, destroyedUnlocked));
    EXPECT_TRUE(bag.adoptProperty(L"adopted", Property::createInt(1)));
    EXPECT_EQ(destroyedUnlocked, 1);
    EXPECT_TRUE(bag.setProperty(L"set", &other));
    EXPECT_EQ(destroyedUnlocked, 2);
    EXPECT_TRUE(bag.removeProperty(L"removed"));

    EXPECT_EQ(destroyedUnlocked, 3);
}

TEST(PropertyHolderTest, TypedSettersStoreTheirType) {
    PropertyHolder bag;

    EXPECT_TRUE(bag.setPointer(L"pointer", &bag));
    EXPECT_TRUE(bag.setInt(L"int", 5));
    EXPECT_TRUE(bag.setOpaque(L"opaque", "abc", 3));
    EXPECT_TRUE(bag.setWString(L"wide", L"text"));
    EXPECT_TRUE(bag.setString(L"narrow", "text"));

    EXPECT_EQ(bag.getProperty(L"pointer")->getType(), arbor::PT_OPAQUE);
    EXPECT_FALSE(bag.getProperty(L"pointer")->isOpaque());
    EXPECT_EQ(bag.getProperty(L"int")->getType(), arbor::PT_INT);
    EXPECT_TRUE(bag.getProperty(L"opaque")->isOpaque());
    EXPECT_EQ(bag.getProperty(L"wide")->getType(), arbor::PT_WSTRING);
    EXPECT_EQ(bag.getProperty(L"narrow")->getType(), arbor::PT_STRING);
}

TEST(PropertyHolderTest, SettingAKeyTwiceLeavesTheSecondAndDeletesTheFirst) {
    int destroyed = 0;
    OpenHolder bag;
    bag.adoptProperty(L"key", new CountedProperty(destroyed, 1));

    EXPECT_TRUE(bag.setInt(L"key", 2));

    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(bag.size(), 1U);
    EXPECT_EQ(bag.getInt(L"key", 0), 2);
}

TEST(PropertyHolderTest, AdoptedPropertyIsStoredItselfAndDeletedWithTheBag) {
    int destroyed = 0;
    {
        PropertyHolder bag;
        auto* property = new CountedProperty(destroyed, 1);
        EXPECT_TRUE(bag.adoptProperty(L"key", property));
        EXPECT_EQ(bag.getProperty(L"key"), property);
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(PropertyHolderTest, AdoptingUnderAPresentKeyGivesItANewSymbol) {
    OpenHolder bag;
    bag.setInt(L"key", 1);
    const int before = bag.symbolOf(L"key");

    bag.setInt(L"key", 2);

    EXPECT_EQ(before, 2);
    EXPECT_EQ(bag.symbolOf(L"key"), 3);
}

TEST(PropertyHolderTest, SetPropertyUnderAPresentKeyKeepsItsSymbol) {
    OpenHolder bag;
    bag.setInt(L"key", 1);
    const int before = bag.symbolOf(L"key");
    const AnyProperty other(2.5);

    EXPECT_TRUE(bag.setProperty(L"key", &other));

    EXPECT_EQ(bag.symbolOf(L"key"), before);
    EXPECT_EQ(bag.getInt(L"key", 0), 2);
}

TEST(PropertyHolderTest, SetPropertyDeletesTheReplacedOne) {
    int destroyed = 0;
    PropertyHolder bag;
    bag.adoptProperty(L"key", new CountedProperty(destroyed, 1));

    bag.setProperty(L"key", &NullProperty::instance());

    EXPECT_EQ(destroyed, 1);
}

TEST(PropertyHolderTest, SetPropertyLeavesTheSourceWithItsHolder) {
    PropertyHolder source;
    source.setString(L"key", "text");
    {
        PropertyHolder copy;
        EXPECT_TRUE(copy.setProperty(L"other", source.getProperty(L"key")));
        EXPECT_NE(copy.getProperty(L"other"), source.getProperty(L"key"));
        EXPECT_EQ(copy.getString(L"other", ""), "text");
    }
    EXPECT_EQ(source.getString(L"key", ""), "text");
}

TEST(PropertyHolderTest, CopiedTextStaysWhenItsSourceGoes) {
    PropertyHolder copy;
    {
        PropertyHolder source;
        source.setWString(L"key", L"text");
        copy.setProperty(L"key", source.getProperty(L"key"));
    }
    EXPECT_EQ(copy.getString(L"key", ""), "text");
}

TEST(PropertyHolderTest, NullPropertyPointersAreRefused) {
    PropertyHolder bag;
    bag.setInt(L"key", 1);

    EXPECT_FALSE(bag.adoptProperty(L"key", nullptr));
    EXPECT_FALSE(bag.setPropertyAndDelete(L"key", nullptr));
    EXPECT_FALSE(bag.setProperty(L"key", nullptr));
    EXPECT_EQ(bag.getInt(L"key", 0), 1);
}

TEST(PropertyHolderTest, SetPropertyAndDeleteStoresACloneAndDestroysItsArgument) {
    int destroyed = 0;
    PropertyHolder bag;

    EXPECT_TRUE(bag.setPropertyAndDelete(L"key", new CountedProperty(destroyed, 7)));

    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(bag.getInt(L"key", 0), 7);
}

TEST(PropertyHolderTest, RemovedPropertyIsDeletedAndItsKeyAbsent) {
    int destroyed = 0;
    PropertyHolder bag;
    bag.adoptProperty(L"key", new CountedProperty(destroyed, 1));

    EXPECT_TRUE(bag.removeProperty(L"key"));

    EXPECT_EQ(destroyed, 1);
    EXPECT_FALSE(bag.hasProperty(L"key"));
}

TEST(PropertyHolderTest, RemovingAnAbsentKeyAnswersFalse) {
    PropertyHolder bag;

    EXPECT_FALSE(bag.removeProperty(L"key"));
    EXPECT_FALSE(bag.removeProperty("key"));
}

TEST(PropertyHolderTest, NarrowAndWideKeyAddressTheSameEntry) {
    PropertyHolder bag;
    const AnyProperty word(std::uint64_t{3});
    std::uint64_t bytes = 0;

    EXPECT_TRUE(bag.setPointer("pointer", &bag));
    EXPECT_TRUE(bag.setInt("int", 5));
    EXPECT_TRUE(bag.setOpaque("opaque", "abc", 3));
    EXPECT_TRUE(bag.setWString("wide", L"w"));
    EXPECT_TRUE(bag.setString("narrow", "n"));
    EXPECT_TRUE(bag.setProperty("property", &word));

    EXPECT_EQ(bag.getPointer(L"pointer", nullptr), &bag);
    EXPECT_EQ(bag.getPointer("pointer", nullptr), &bag);
    EXPECT_EQ(bag.getInt(L"int", 0), 5);
    EXPECT_EQ(bag.getInt("int", 0), 5);
    EXPECT_EQ(bag.getOpaque("opaque", &bytes, nullptr), bag.getOpaque(L"opaque", &bytes, nullptr));
    EXPECT_EQ(bag.getString(L"wide", ""), "w");
    EXPECT_EQ(bag.getString("narrow", ""), "n");
    EXPECT_EQ(bag.getProperty("property"), bag.getProperty(L"property"));
    EXPECT_TRUE(bag.hasProperty("int"));
    EXPECT_TRUE(bag.removeProperty("int"));
    EXPECT_FALSE(bag.hasProperty(L"int"));
}

TEST(PropertyHolderTest, LongNarrowKeyAddressesTheSameEntry) {
    PropertyHolder bag;
    const std::string narrowKey(500, 'k');
    const std::wstring wideKey(500, L'k');

    bag.setInt(narrowKey.c_str(), 5);

    EXPECT_EQ(bag.getInt(wideKey.c_str(), 0), 5);
}

TEST(PropertyHolderTest, NarrowKeyWithLettersOfTheCodePageAddressesTheSameEntry) {
    PropertyHolder bag;

    bag.setInt("Gr\xF6\xDF\x65", 5);

    EXPECT_EQ(bag.getInt(L"Gr\u00F6\u00DFe", 0), 5);
}

TEST(PropertyHolderTest, TextAsLongAsItIsIsStored) {
    PropertyHolder bag;
    const std::string text(100000, 'x');

    bag.setString(L"key", text.c_str());

    EXPECT_EQ(bag.getString(L"key", ""), text);
}

TEST(PropertyHolderTest, BagTakesMoreNumbersAndPointersThanItHasPlacesFor) {
    constexpr int kNumbers = 10;
    PropertyHolder numbers;
    PropertyHolder pointers;
    int target[kNumbers] = {};

    for (int number = 0; number < kNumbers; ++number) {
        const std::wstring key = std::to_wstring(number);
        EXPECT_TRUE(numbers.setInt(key.c_str(), number));
        EXPECT_TRUE(pointers.setPointer(key.c_str(), &target[number]));
    }

    for (int number = 0; number < kNumbers; ++number) {
        const std::wstring key = std::to_wstring(number);
        EXPECT_EQ(numbers.getInt(key.c_str(), -1), number);
        EXPECT_EQ(pointers.getPointer(key.c_str(), nullptr), &target[number]);
    }
}

TEST(PropertyHolderTest, BagDeletesEveryPropertyThatItHolds) {
    int destroyed = 0;
    {
        PropertyHolder bag;
        for (int number = 0; number < 20; ++number) {
            bag.adoptProperty(std::to_wstring(number).c_str(), new CountedProperty(destroyed, 1));
        }
    }
    EXPECT_EQ(destroyed, 20);
}

TEST(PropertyHolderTest, NarrowKeyIsCutAtTheConversionLimit) {
    constexpr std::size_t kLongest = 32767;
    PropertyHolder bag;

    bag.setInt(std::string(kLongest + 100, 'k').c_str(), 5);

    EXPECT_EQ(bag.getInt(std::wstring(kLongest, L'k').c_str(), 0), 5);
}

TEST(PropertyHolderTest, WideTextOfWhateverIsStoredLosesNothing) {
    PropertyHolder bag;
    bag.setString(L"narrow", "Beamline");
    bag.setWString(L"wide", L"\x0416\x4E2D");
    bag.setInt(L"number", -7);
    const AnyProperty nothing(arbor::PT_WSTRING, 0);
    bag.setProperty(L"nothing", &nothing);

    EXPECT_EQ(arbor::wideText(bag, L"narrow", L"default"), L"Beamline");
    EXPECT_EQ(arbor::wideText(bag, L"wide", L"default"), L"\x0416\x4E2D");
    EXPECT_EQ(arbor::wideText(bag, L"number", L"default"), L"-7");
    EXPECT_EQ(arbor::wideText(bag, L"nothing", L"default"), L"");
    EXPECT_EQ(arbor::wideText(bag, L"absent", L"default"), L"default");
}

TEST(PropertyHolderTest, MeasuredKeyAddressesTheSameEntryAsItsText) {
    constexpr Key key(L"key");
    OpenHolder bag;
    int place = 0;

    EXPECT_TRUE(bag.setInt(key, 3));
    EXPECT_EQ(bag.getInt(L"key", 0), 3);
    EXPECT_TRUE(bag.setString(L"key", "text"));
    EXPECT_EQ(bag.getString(key, ""), "text");
    EXPECT_TRUE(bag.setWString(key, L"12"));
    EXPECT_EQ(bag.getInt(key, 0), 12);
    EXPECT_TRUE(bag.setPointer(key, &place));
    EXPECT_EQ(bag.getPointer(L"key", nullptr), &place);
    EXPECT_TRUE(bag.setString(key, "narrow"));
    EXPECT_EQ(bag.getString(L"key", ""), "narrow");
    EXPECT_TRUE(bag.adoptProperty(key, Property::createInt(4)));
    EXPECT_EQ(bag.getInt(L"key", 0), 4);
    EXPECT_FALSE(bag.adoptProperty(key, nullptr));
    EXPECT_EQ(bag.size(), 1U);
    EXPECT_TRUE(bag.removeProperty(key));
    EXPECT_FALSE(bag.hasProperty(L"key"));
}

TEST(PropertyHolderTest, AbsentMeasuredKeyReadsAsTheDefault) {
    constexpr Key key(L"key");
    PropertyHolder bag;
    bag.setInt(L"kex", 1);
    bag.setInt(L"keys", 2);
    int place = 0;

    EXPECT_EQ(bag.getInt(key, 17), 17);
    EXPECT_EQ(bag.getString(key, "text"), "text");
    EXPECT_EQ(bag.getPointer(key, &place), &place);
    EXPECT_FALSE(bag.removeProperty(key));
}

TEST(PropertyHolderTest, TextOfAKeyMayBeGoneAfterTheCall) {
    PropertyHolder bag;
    {
        std::wstring text = L"a key that is gone";
        bag.setInt(Key::of(text.c_str()), 1);
        bag.setInt((text + L" too").c_str(), 2);
        text.assign(text.size(), L'x');
    }

    EXPECT_EQ(bag.getInt(L"a key that is gone", 0), 1);
    EXPECT_EQ(bag.getInt(L"a key that is gone too", 0), 2);
}

TEST(PropertyHolderTest, ConstantOfAKeyIsNotCopied) {
    constexpr Key key(L"key");
    OpenHolder bag;
    bag.setInt(key, 1);
    bag.setInt(L"other key", 1);

    EXPECT_EQ(bag.storedKey(0), static_cast<const wchar_t*>(key));
    EXPECT_EQ(std::wstring(bag.storedKey(1), 9), L"other key");
}

TEST(PropertyHolderTest, KeyIsTheTextAndItsLength) {
    constexpr Key constant(L"key");
    const Key measured = Key::of(L"");

    EXPECT_EQ(constant.view(), L"key");
    EXPECT_STREQ(constant, L"key");
    EXPECT_EQ(measured.view(), L"");
}

TEST(PropertyHolderTest, FreedPlaceOfANumberIsUsedAgain) {
    PropertyHolder bag;
    bag.setInt(L"a", 1);
    const IProperty* const first = bag.getProperty(L"a");
    bag.removeProperty(L"a");

    bag.setInt(L"b", 2);

    EXPECT_EQ(bag.getProperty(L"b"), first);
    EXPECT_EQ(bag.getInt(L"b", 0), 2);
}
