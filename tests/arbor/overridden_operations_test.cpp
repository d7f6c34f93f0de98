// An operation that is made of another virtual operation of the same object must reach the override
// of a derived class. So a derived bag, database or thread can change one operation, and the others
// use the changed one.
#include "arbor/abstract_database.h"
#include "arbor/abstract_property_holder.h"
#include "arbor/abstract_thread.h"
#include "arbor/null_property.h"
#include "arbor/property.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

using arbor::AbstractDatabase;
using arbor::AbstractPropertyHolder;
using arbor::AbstractThread;
using arbor::Guid;
using arbor::IProperty;
using arbor::NullProperty;
using arbor::Property;

namespace {

// Overrides every operation with a wide key and records its last call.
class WideHolder : public AbstractPropertyHolder {
public:
    using AbstractPropertyHolder::getInt;
    using AbstractPropertyHolder::getOpaque;
    using AbstractPropertyHolder::getPointer;
    using AbstractPropertyHolder::getProperty;
    using AbstractPropertyHolder::getString;
    using AbstractPropertyHolder::hasProperty;
    using AbstractPropertyHolder::removeProperty;
    using AbstractPropertyHolder::setInt;
    using AbstractPropertyHolder::setOpaque;
    using AbstractPropertyHolder::setPointer;
    using AbstractPropertyHolder::setProperty;
    using AbstractPropertyHolder::setString;
    using AbstractPropertyHolder::setWString;

    IProperty* getProperty(const wchar_t* key) const override {
        note(key, L"getProperty");
        return &NullProperty::instance();
    }
    bool hasProperty(const wchar_t* key) const override { return note(key, L"hasProperty"); }
    bool setPointer(const wchar_t* key, void* pointer) override {
        return note(key, L"setPointer", pointer);
    }
    bool setInt(const wchar_t* key, std::int32_t) override { return note(key, L"setInt"); }
    bool setOpaque(const wchar_t* key, const void* data, std::uint64_t) override {
        return note(key, L"setOpaque", data);
    }
    bool setWString(const wchar_t* key, const wchar_t* text) override {
        return note(key, L"setWString", text);
    }
    bool setString(const wchar_t* key, const char* text) override {
        return note(key, L"setString", text);
    }
    bool setProperty(const wchar_t* key, const IProperty* property) override {
        return note(key, L"setProperty", property);
    }
    bool removeProperty(const wchar_t* key) override { return note(key, L"removeProperty"); }
    std::int32_t getInt(const wchar_t* key, std::int32_t defaultValue) const override {
        note(key, L"getInt");
        return defaultValue;
    }
    void* getOpaque(const wchar_t* key, std::uint64_t* bytes, void* defaultValue) const override {
        note(key, L"getOpaque", bytes);
        return defaultValue;
    }
    void* getPointer(const wchar_t* key, void* defaultValue) const override {
        note(key, L"getPointer");
        return defaultValue;
    }
    std::string getString(const wchar_t* key, const char* defaultValue) const override {
        note(key, L"getString");
        return defaultValue;
    }

    mutable std::wstring lastCall;
    mutable const void* lastArgument = nullptr;

private:
    bool note(const wchar_t* key, const wchar_t* operation, const void* argument = nullptr) const {
        lastCall = std::wstring(operation) + L" " + key;
        lastArgument = argument;
        return true;
    }
};

// Records what the typed setters pass to setPropertyAndDelete().
class OwningHolder : public AbstractPropertyHolder {
public:
    using AbstractPropertyHolder::getOpaque;
    using AbstractPropertyHolder::getString;

    bool setPropertyAndDelete(const wchar_t* key, IProperty* property) override {
        lastKey = key;
        last.reset(property);
        return true;
    }
    std::string getString(const wchar_t*, const char* defaultValue) const override {
        return defaultValue;
    }
    void* getOpaque(const wchar_t*, std::uint64_t* bytes, void* defaultValue) const override {
        sizeWasAsked = bytes != nullptr;
        return defaultValue;
    }

    std::wstring lastKey;
    std::unique_ptr<IProperty> last;
    mutable bool sizeWasAsked = false;
};

// Records which overrides are reached, and with which key.
class RecordingDatabase : public AbstractDatabase {
public:
    using AbstractDatabase::contains;
    using AbstractDatabase::get;
    using AbstractDatabase::getGuid;
    using AbstractDatabase::remove;
    using AbstractDatabase::set;

    bool contains(const wchar_t* flatKey) override { return note(L"contains", flatKey); }
    IProperty* get(const wchar_t* flatKey) override {
        note(L"get", flatKey);
        return AbstractDatabase::get(flatKey);
    }
    IProperty* get(const wchar_t* key1, const wchar_t* key2) override {
        note(L"get", key1);
        return AbstractDatabase::get(key1, key2);
    }
    bool set(const wchar_t* flatKey, IProperty* property,
             arbor::DatabaseObserver* observer) override {
        lastProperty = property;
        lastObserver = observer;
        return note(L"set", flatKey);
    }
    bool remove(const wchar_t* flatKey) override { return note(L"remove", flatKey); }
    void getGuid(Guid& guid, const wchar_t* className) override {
        note(L"getGuid", className);
        AbstractDatabase::getGuid(guid, className);
    }

    std::wstring calls;
    IProperty* lastProperty = nullptr;
    arbor::DatabaseObserver* lastObserver = nullptr;

private:
    bool note(const wchar_t* operation, const wchar_t* key) {
        calls += std::wstring(operation) + L" " + key + L"; ";
        return true;
    }
};

class CountingThread : public AbstractThread {
public:
    ~CountingThread() override { endThreadUse(); }
    std::uint32_t run() override { return 0; }
    void notifyObservers(arbor::IMessage*) override { ++messages; }

    int messages = 0;
};

struct OverriddenBagTest : testing::Test {
    WideHolder holder;
    arbor::IPropertyHolder& bag = holder;
    int place = 0;
};

}  // namespace

TEST_F(OverriddenBagTest, GettersWithANarrowKeyReachTheOverrideWithTheirArguments) {
    std::uint64_t bytes = 0;

    bag.getProperty("a");
    EXPECT_EQ(holder.lastCall, L"getProperty a");
    EXPECT_TRUE(bag.hasProperty("b"));
    EXPECT_EQ(holder.lastCall, L"hasProperty b");
    EXPECT_EQ(bag.getInt("c", 17), 17);
    EXPECT_EQ(holder.lastCall, L"getInt c");
    EXPECT_EQ(bag.getOpaque("d", &bytes, &place), &place);
    EXPECT_EQ(holder.lastCall, L"getOpaque d");
    EXPECT_EQ(holder.lastArgument, &bytes);
    EXPECT_EQ(bag.getPointer("e", &place), &place);
    EXPECT_EQ(holder.lastCall, L"getPointer e");
    EXPECT_EQ(bag.getString("f", "text"), "text");
    EXPECT_EQ(holder.lastCall, L"getString f");
}

TEST_F(OverriddenBagTest, SettersWithANarrowKeyReachTheOverrideWithTheirArguments) {
    const char narrow[] = "text";
    const wchar_t wide[] = L"text";

    EXPECT_TRUE(bag.setPointer("a", &place));
    EXPECT_EQ(holder.lastCall, L"setPointer a");
    EXPECT_EQ(holder.lastArgument, &place);
    EXPECT_TRUE(bag.setInt("b", 1));
    EXPECT_EQ(holder.lastCall, L"setInt b");
    EXPECT_TRUE(bag.setOpaque("c", &place, sizeof place));
    EXPECT_EQ(holder.lastCall, L"setOpaque c");
    EXPECT_EQ(holder.lastArgument, &place);
    EXPECT_TRUE(bag.setWString("d", wide));
    EXPECT_EQ(holder.lastCall, L"setWString d");
    EXPECT_EQ(holder.lastArgument, wide);
    EXPECT_TRUE(bag.setString("e", narrow));
    EXPECT_EQ(holder.lastCall, L"setString e");
    EXPECT_EQ(holder.lastArgument, narrow);
    EXPECT_TRUE(bag.setProperty("f", &NullProperty::instance()));
    EXPECT_EQ(holder.lastCall, L"setProperty f");
    EXPECT_EQ(holder.lastArgument, &NullProperty::instance());
    EXPECT_TRUE(bag.removeProperty("g"));
    EXPECT_EQ(holder.lastCall, L"removeProperty g");
}

TEST(OverriddenOperationsTest, TypedSettersReachTheOverrideWithTheirValue) {
    OwningHolder holder;
    arbor::IPropertyHolder& bag = holder;
    int place = 0;

    EXPECT_TRUE(bag.setPointer(L"a", &place));
    EXPECT_EQ(holder.last->getData(), &place);
    EXPECT_TRUE(bag.setInt(L"b", 7));
    EXPECT_EQ(holder.last->toInt(), 7);
    EXPECT_TRUE(bag.setOpaque(L"c", "xy", 2));
    EXPECT_EQ(std::memcmp(holder.last->getData(), "xy", 2), 0);
    EXPECT_TRUE(bag.setWString(L"d", L"wide"));
    EXPECT_EQ(holder.last->toString(), "wide");
    EXPECT_TRUE(bag.setString(L"e", "narrow"));
    EXPECT_EQ(holder.last->toString(), "narrow");
    EXPECT_EQ(holder.lastKey, L"e");
}

TEST(OverriddenOperationsTest, PointerIsReadThroughTheOverrideOfTheBuffer) {
    const OwningHolder holder;
    int place = 0;

    EXPECT_EQ(static_cast<const arbor::IPropertyHolder&>(holder).getPointer(L"key", &place),
              &place);
    EXPECT_TRUE(holder.sizeWasAsked);
}

TEST(OverriddenOperationsTest, DatabaseOperationsWithTwoKeysReachTheOverrideOfTheFlatKey) {
    RecordingDatabase database;
    int property = 0;
    auto* const stored = reinterpret_cast<IProperty*>(&property);

    EXPECT_TRUE(database.contains(L"a", L"b"));
    EXPECT_TRUE(database.remove(L"c", L"d"));
    EXPECT_TRUE(database.set(L"e", L"f", stored, &database));

    EXPECT_EQ(database.calls, L"contains /a/b; remove /c/d; set /e/f; ");
    EXPECT_EQ(database.lastProperty, stored);
    EXPECT_EQ(database.lastObserver, &database);
}

TEST(OverriddenOperationsTest, GuidOfAClassIsReadThroughEveryOverride) {
    RecordingDatabase database;
    Guid guid;

    database.getGuid(guid, "Name");

    EXPECT_EQ(database.calls, L"getGuid Name; get Name; get /Name/GUID; ");
}

TEST(OverriddenOperationsTest, ThreadTellsItsObserversThroughTheOverride) {
    CountingThread thread;

    thread.requestStart();

    EXPECT_EQ(thread.messages, 1);
}
