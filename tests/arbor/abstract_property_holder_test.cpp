#include "arbor/abstract_property_holder.h"

#include "arbor/null_property.h"
#include "tests/support/test_properties.h"

#include <gtest/gtest.h>

#include <string>

using arbor::IProperty;
using arbor::NullProperty;
using test::CountedProperty;

namespace {

// Implements the operations that the base class leaves open, and records the property that each
// typed setter passes to setProperty().
class RecordingHolder : public arbor::AbstractPropertyHolder {
public:
    using AbstractPropertyHolder::getString;
    using AbstractPropertyHolder::setProperty;

    std::string getString(const wchar_t*, const char* defaultValue) const override {
        return defaultValue;
    }
    bool setProperty(const wchar_t* key, const IProperty* property) override {
        lastKey = key;
        lastType = property->getType();
        return answer;
    }

    std::wstring lastKey;
    std::uint32_t lastType = 0;
    bool answer = true;
};

class SilentHolder : public arbor::AbstractPropertyHolder {
public:
    using AbstractPropertyHolder::getString;
    std::string getString(const wchar_t*, const char* defaultValue) const override {
        return defaultValue;
    }
};

}  // namespace

TEST(AbstractPropertyHolderTest, EveryOperationHasAHarmlessAnswer) {
    SilentHolder holder;
    int place = 0;
    std::uint64_t bytes = 99;

    EXPECT_EQ(holder.getProperty(L"key"), &NullProperty::instance());
    EXPECT_FALSE(holder.hasProperty(L"key"));
    EXPECT_FALSE(holder.setProperty(L"key", &NullProperty::instance()));
    EXPECT_FALSE(holder.removeProperty(L"key"));
    EXPECT_FALSE(holder.setInt(L"key", 1));
    EXPECT_EQ(holder.getInt(L"key", 17), 17);
    EXPECT_EQ(holder.getOpaque(L"key", &bytes, &place), &place);
    EXPECT_EQ(bytes, 99U);
    EXPECT_EQ(holder.getPointer(L"key", &place), &place);
}

TEST(AbstractPropertyHolderTest, TypedSettersHandTheirPropertyToSetProperty) {
    RecordingHolder holder;

    EXPECT_TRUE(holder.setPointer(L"a", &holder));
    EXPECT_EQ(holder.lastType, arbor::PT_OPAQUE);
    EXPECT_TRUE(holder.setInt(L"b", 1));
    EXPECT_EQ(holder.lastType, arbor::PT_INT);
    EXPECT_TRUE(holder.setOpaque(L"c", "x", 1));
    EXPECT_EQ(holder.lastType, arbor::PT_OPAQUE);
    EXPECT_TRUE(holder.setWString(L"d", L"x"));
    EXPECT_EQ(holder.lastType, arbor::PT_WSTRING);
    EXPECT_TRUE(holder.setString("e", "x"));
    EXPECT_EQ(holder.lastType, arbor::PT_STRING);
    EXPECT_EQ(holder.lastKey, L"e");
}

TEST(AbstractPropertyHolderTest, AdoptPropertyForwardsAndLeavesThePropertyToTheCaller) {
    RecordingHolder holder;
    int destroyed = 0;
    {
        CountedProperty property(destroyed, 1);
        EXPECT_TRUE(holder.adoptProperty(L"key", &property));
        EXPECT_EQ(holder.lastKey, L"key");
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_FALSE(holder.adoptProperty(L"key", nullptr));
}

TEST(AbstractPropertyHolderTest, SetPropertyAndDeleteAlwaysDeletesAndAnswersTheResult) {
    RecordingHolder holder;
    int destroyed = 0;

    EXPECT_TRUE(holder.setPropertyAndDelete(L"key", new CountedProperty(destroyed, 1)));
    EXPECT_EQ(destroyed, 1);
    holder.answer = false;
    EXPECT_FALSE(holder.setPropertyAndDelete(L"key", new CountedProperty(destroyed, 1)));
    EXPECT_EQ(destroyed, 2);
    EXPECT_FALSE(holder.setPropertyAndDelete(L"key", nullptr));
}
