#include "arbor/abstract_database.h"

#include "arbor/null_property.h"
#include "arbor/property.h"
#include "tests/support/test_properties.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using arbor::AbstractDatabase;
using arbor::Guid;
using arbor::IDatabase;
using arbor::IProperty;
using arbor::NullProperty;
using arbor::Property;
using test::CountedProperty;

namespace {

constexpr Guid kClass{0x505CD427, 0xE218, 0x463B, {0xAC, 0x41, 0xE7, 0x37, 0xBD, 4, 0x64, 0xC9}};

struct AbstractDatabaseTest : testing::Test {
    AbstractDatabase database;
    int firstObserver = 0;
    int secondObserver = 0;

    std::uint32_t idOf(const wchar_t* component) {
        return database.getId(IDatabase::CompoundKey{component});
    }
    std::vector<void*> observersOf(std::uint32_t id) {
        const auto place = database.observers().find(id);
        return place != database.observers().end() ? place->second : std::vector<void*>{};
    }
};

}  // namespace

TEST_F(AbstractDatabaseTest, IsReady) {
    EXPECT_TRUE(database.isReady());
}

TEST_F(AbstractDatabaseTest, FlatKeyIsEveryComponentAfterASlash) {
    EXPECT_EQ((IDatabase::CompoundKey{L"a", L"b"}).toString(), L"/a/b");
    EXPECT_EQ((IDatabase::CompoundKey{L"x"}).toString(), L"/x");
    EXPECT_EQ((IDatabase::CompoundKey{}).toString(), L"");
    EXPECT_EQ((IDatabase::CompoundKey{L"", L""}).toString(), L"//");
}

TEST_F(AbstractDatabaseTest, SlashInAComponentIsNotEscaped) {
    database.set(L"a", L"b", Property::createInt(5));

    EXPECT_EQ(idOf(L"a/b"), database.getId(IDatabase::CompoundKey{L"a", L"b"}));
    EXPECT_TRUE(database.contains(L"/a/b"));
}

TEST_F(AbstractDatabaseTest, EntryIsReachedByCompoundKeyFlatKeyAndId) {
    auto* property = Property::createInt(5);
    EXPECT_TRUE(database.set(L"a", L"b", property));
    const std::uint32_t id = database.getId(IDatabase::CompoundKey{L"a", L"b"});

    EXPECT_EQ(database.get(L"a", L"b"), property);
    EXPECT_EQ(database.get(L"/a/b"), property);
    EXPECT_EQ(database.get(id), property);
    EXPECT_TRUE(database.contains(L"a", L"b"));
    EXPECT_TRUE(database.contains(L"/a/b"));
    EXPECT_TRUE(database.contains(id));
    EXPECT_EQ(database.getProperty(L"/a/b"), property);
}

TEST_F(AbstractDatabaseTest, MissingEntryReadsAsTheNullProperty) {
    EXPECT_EQ(database.get(L"a", L"b"), &NullProperty::instance());
    EXPECT_EQ(database.get(L"/a"), &NullProperty::instance());
    EXPECT_EQ(database.get(2U), &NullProperty::instance());
    EXPECT_EQ(database.get(0U), &NullProperty::instance());
    EXPECT_FALSE(database.contains(L"a", L"b"));
    EXPECT_FALSE(database.contains(L"/a"));
    EXPECT_FALSE(database.contains(0U));
    EXPECT_EQ(idOf(L"a"), 0U);
}

TEST_F(AbstractDatabaseTest, SettingAnExistingKeyReplacesTheValueAndKeepsItsId) {
    int destroyed = 0;
    database.set(L"/a", new CountedProperty(destroyed, 1));
    const std::uint32_t id = idOf(L"a");

    EXPECT_TRUE(database.set(L"/a", Property::createInt(2)));

    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(idOf(L"a"), id);
    EXPECT_EQ(database.get(id)->toInt(), 2);
}

TEST_F(AbstractDatabaseTest, SettingByIdReplacesAnExistingEntryOnly) {
    int destroyed = 0;
    database.set(L"/a", new CountedProperty(destroyed, 1));
    std::unique_ptr<IProperty> refused(Property::createInt(3));

    EXPECT_TRUE(database.set(idOf(L"a"), Property::createInt(2)));
    EXPECT_FALSE(database.set(99U, refused.get()));

    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(database.get(L"/a")->toInt(), 2);
}

TEST_F(AbstractDatabaseTest, NullPropertyPointersAreRefused) {
    EXPECT_FALSE(database.set(L"/a", nullptr));
    EXPECT_FALSE(database.set(L"a", L"b", nullptr));
    EXPECT_FALSE(database.set(2U, nullptr));
}

TEST_F(AbstractDatabaseTest, NullPropertyOfTheProcessIsNeverTakenOver) {
    database.set(L"/a", Property::createInt(1));

    EXPECT_FALSE(database.set(L"/a", &NullProperty::instance()));
    EXPECT_FALSE(database.set(L"/b", &NullProperty::instance()));
    EXPECT_FALSE(database.set(L"b", L"c", &NullProperty::instance()));
    EXPECT_FALSE(database.set(idOf(L"a"), &NullProperty::instance()));

    EXPECT_EQ(database.get(L"/a")->toInt(), 1);
    EXPECT_FALSE(database.contains(L"/b"));
    EXPECT_FALSE(database.contains(L"b", L"c"));
}

TEST_F(AbstractDatabaseTest, PropertyMayBeStoredAgainInItsOwnEntry) {
    database.set(L"/a", Property::createString("text", 4));

    EXPECT_TRUE(database.set(L"/a", database.get(L"/a")));
    EXPECT_TRUE(database.set(idOf(L"a"), database.get(L"/a")));

    EXPECT_EQ(database.get(L"/a")->toString(), "text");
}

TEST_F(AbstractDatabaseTest, ReplacedAndRemovedPropertiesAreDestroyedWithoutTheLock) {
    int destroyedUnlocked = 0;
    for (const wchar_t* key : {L"/a", L"/b", L"/c", L"/d"})
        database.set(key, new test::LockProbe(database, destroyedUnlocked));

    EXPECT_TRUE(database.set(L"/a", Property::createInt(1)));
    EXPECT_EQ(destroyedUnlocked, 1);
    EXPECT_TRUE(database.set(idOf(L"b"), Property::createInt(1)));
    EXPECT_EQ(destroyedUnlocked, 2);
    EXPECT_TRUE(database.remove(L"/c"));
    EXPECT_EQ(destroyedUnlocked, 3);
    EXPECT_TRUE(database.remove(idOf(L"d")));

    EXPECT_EQ(destroyedUnlocked, 4);
}

TEST_F(AbstractDatabaseTest, EntryIsRemovedByEveryKindOfKey) {
    int destroyed = 0;
    for (const wchar_t* key : {L"/a/b", L"/c", L"/d"})
        database.set(key, new CountedProperty(destroyed, 1));

    EXPECT_TRUE(database.remove(L"a", L"b"));
    EXPECT_TRUE(database.remove(L"/c"));
    EXPECT_TRUE(database.remove(idOf(L"d")));

    EXPECT_EQ(destroyed, 3);
    EXPECT_FALSE(database.contains(L"/a/b"));
    EXPECT_FALSE(database.contains(L"/c"));
    EXPECT_FALSE(database.contains(L"/d"));
    EXPECT_FALSE(database.remove(L"/c"));
    EXPECT_FALSE(database.remove(0U));
}

TEST_F(AbstractDatabaseTest, ObserverGivenWithANewEntryIsRecordedForItsId) {
    database.set(L"/a", Property::createInt(1), &firstObserver);
    database.set(L"/a", Property::createInt(2), &secondObserver);

    EXPECT_EQ(observersOf(idOf(L"a")), std::vector<void*>{&firstObserver});
}

TEST_F(AbstractDatabaseTest, ObserverOfAllEntriesIsRecordedUnderZero) {
    database.addObserver(&firstObserver);

    EXPECT_EQ(observersOf(0), std::vector<void*>{&firstObserver});
}

TEST_F(AbstractDatabaseTest, ObserverOfAKeyIsRecordedWhereTheEntryExists) {
    database.set(L"/a", Property::createInt(1));

    database.addObserver(&firstObserver, L"/a");
    database.addObserver(&secondObserver, L"/missing");

    EXPECT_EQ(observersOf(idOf(L"a")), std::vector<void*>{&firstObserver});
    EXPECT_EQ(database.observers().size(), 1U);
}

TEST_F(AbstractDatabaseTest, RemovedEntryTakesItsObserversAlong) {
    database.set(L"/a", Property::createInt(1), &firstObserver);
    database.set(L"/b", Property::createInt(1), &firstObserver);
    const std::uint32_t a = idOf(L"a");
    const std::uint32_t b = idOf(L"b");

    database.remove(L"/a");
    database.remove(b);

    EXPECT_TRUE(observersOf(a).empty());
    EXPECT_TRUE(observersOf(b).empty());
}

TEST_F(AbstractDatabaseTest, RemovingAnObserverTakesItsFirstRecordFromEveryList) {
    database.set(L"/a", Property::createInt(1), &secondObserver);
    for (void* observer : {&firstObserver, &secondObserver, &firstObserver})
        database.addObserver(observer);
    database.addObserver(&firstObserver, L"/a");

    database.removeObserver(&firstObserver);

    EXPECT_EQ(observersOf(0), (std::vector<void*>{&secondObserver, &firstObserver}));
    EXPECT_EQ(observersOf(idOf(L"a")), std::vector<void*>{&secondObserver});
}

TEST_F(AbstractDatabaseTest, RemovingAnUnknownObserverLeavesTheListsAlone) {
    database.addObserver(&firstObserver);

    database.removeObserver(&secondObserver);

    EXPECT_EQ(observersOf(0), std::vector<void*>{&firstObserver});
}

TEST_F(AbstractDatabaseTest, GuidOfAClassIsReadByWideAndNarrowName) {
    database.set(L"Timer", L"GUID", Property::createOpaque(&kClass, sizeof kClass));
    Guid wide;
    Guid narrow;

    database.getGuid(wide, L"Timer");
    database.getGuid(narrow, "Timer");

    EXPECT_EQ(wide, kClass);
    EXPECT_EQ(narrow, kClass);
}

TEST_F(AbstractDatabaseTest, GuidOfAnUnknownClassIsAllZero) {
    Guid guid = kClass;

    database.getGuid(guid, L"Timer");

    EXPECT_TRUE(guid.isZero());
}

TEST_F(AbstractDatabaseTest, GuidFromAnEntryThatIsNotSixteenBytesLongIsAllZero) {
    database.set(L"Short", L"GUID", Property::createOpaque(&kClass, sizeof kClass - 1));
    const char tooLong[sizeof kClass + 1] = {"0123456789abcdef"};
    database.set(L"Long", L"GUID", Property::createOpaque(tooLong, sizeof tooLong));
    database.set(L"Text", L"GUID", Property::createString("0123456789abcdef", 16));

    for (const char* name : {"Short", "Long", "Text"}) {
        Guid guid = kClass;
        database.getGuid(guid, name);
        EXPECT_TRUE(guid.isZero()) << name;
    }
}
