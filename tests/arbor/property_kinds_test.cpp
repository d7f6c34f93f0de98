// What each kind of property says about itself, and what its clones share with it.
#include "arbor/property.h"

#include "arbor/custom_property.h"
#include "arbor/null_property.h"
#include "arbor/opaque_property.h"
#include "arbor/text_property.h"
#include "tests/support/test_properties.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

using arbor::CustomProperty;
using arbor::Guid;
using arbor::IProperty;
using arbor::NullProperty;
using arbor::OpaqueProperty;
using arbor::Property;
using test::AnyProperty;

namespace {

using Owned = std::unique_ptr<IProperty>;

// A text property that is not one of ours: unlike ours, it has no reference count in front of its
// characters, so a clone cannot share them.
class ForeignText : public IProperty {
public:
    explicit ForeignText(const char* text) : _type(arbor::PT_STRING), _narrow(text) {}
    explicit ForeignText(const wchar_t* text) : _type(arbor::PT_WSTRING), _wide(text) {}
    explicit ForeignText(std::uint32_t type) : _type(type), _isAbsent(true) {}

    [[nodiscard]] void* getData() const override {
        if (_isAbsent) return nullptr;
        return _type == arbor::PT_STRING ? static_cast<void*>(const_cast<char*>(_narrow.data()))
                                         : static_cast<void*>(const_cast<wchar_t*>(_wide.data()));
    }
    std::string& toString(std::string& out, StringFunctor&) const override { return out; }
    [[nodiscard]] std::string toString() const override { return {}; }
    [[nodiscard]] std::int32_t toInt(Functor<int>&) const override { return 0; }
    [[nodiscard]] std::int32_t toInt() const override { return 0; }
    [[nodiscard]] float toFloat(Functor<float>&) const override { return 0; }
    [[nodiscard]] float toFloat() const override { return 0; }
    [[nodiscard]] double toDouble(Functor<double>&) const override { return 0; }
    [[nodiscard]] double toDouble() const override { return 0; }
    [[nodiscard]] std::uint64_t toUInt64(Functor<std::uint64_t>&) const override { return 0; }
    [[nodiscard]] std::uint64_t toUInt64() const override { return 0; }
    [[nodiscard]] bool isSimple() const override { return true; }
    [[nodiscard]] bool isOpaque() const override { return false; }
    [[nodiscard]] bool isCustom() const override { return false; }
    [[nodiscard]] bool isNull() const override { return false; }
    [[nodiscard]] std::uint32_t getType() const override { return _type; }
    [[nodiscard]] std::uint64_t getSize() const override { return 0; }
    [[nodiscard]] const Guid* getTypeId() const override { return nullptr; }

private:
    std::uint32_t _type;
    std::string _narrow;
    std::wstring _wide;
    bool _isAbsent = false;
};

// A custom buffer with a type code of its own.
class TypedCustomBuffer : public CustomProperty {
public:
    using CustomProperty::CustomProperty;
    [[nodiscard]] std::uint32_t getType() const override { return kOddType; }
    static constexpr std::uint32_t kOddType = 12;
};

constexpr Guid kLayout{0x11223344, 0x5566, 0x7788, {1, 2, 3, 4, 5, 6, 7, 8}};

Owned narrow(const char* text) {
    return Owned(Property::createString(text, std::strlen(text)));
}
Owned wide(const wchar_t* text) {
    return Owned(Property::createWString(text, std::wcslen(text)));
}
Owned buffer(const char* bytes, std::size_t count) {
    return Owned(Property::createOpaque(bytes, count));
}

}  // namespace

TEST(PropertyKindsTest, PlainPropertyIsSimpleAndHasNoSize) {
    const Owned text = narrow("abc");

    EXPECT_TRUE(text->isSimple());
    EXPECT_FALSE(text->isOpaque());
    EXPECT_FALSE(text->isCustom());
    EXPECT_FALSE(text->isNull());
    EXPECT_EQ(text->getSize(), 0U);
}

TEST(PropertyKindsTest, NullPropertyIsSimpleNullAndTheOnlyOne) {
    NullProperty& null = NullProperty::instance();

    EXPECT_TRUE(null.isSimple());
    EXPECT_FALSE(null.isOpaque());
    EXPECT_FALSE(null.isCustom());
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(null.getSize(), 0U);
    EXPECT_EQ(null.getType(), arbor::PT_NULL);
    EXPECT_EQ(null.getData(), nullptr);
    EXPECT_EQ(&null, &NullProperty::instance());
}

TEST(PropertyKindsTest, BufferIsOpaqueAndOwnsACopy) {
    std::array<char, 3> bytes{'a', '\0', 'c'};
    const OpaqueProperty property(bytes.data(), bytes.size());
    bytes.fill('x');

    EXPECT_FALSE(property.isSimple());
    EXPECT_TRUE(property.isOpaque());
    EXPECT_FALSE(property.isCustom());
    EXPECT_FALSE(property.isNull());
    ASSERT_EQ(property.getSize(), 3U);
    EXPECT_EQ(std::memcmp(property.getData(), "a\0c", 3), 0);
}

TEST(PropertyKindsTest, EmptyBufferHasNoAddress) {
    const OpaqueProperty property("abc", 0);

    EXPECT_EQ(property.getData(), nullptr);
    EXPECT_EQ(property.getSize(), 0U);
}

TEST(PropertyKindsTest, CustomBufferNamesItsLayout) {
    Guid layout = kLayout;
    const CustomProperty property("abc", 3, layout);
    layout = Guid{};

    EXPECT_FALSE(property.isSimple());
    EXPECT_TRUE(property.isOpaque());
    EXPECT_TRUE(property.isCustom());
    EXPECT_FALSE(property.isNull());
    EXPECT_EQ(property.getType(), arbor::PT_OPAQUE);
    EXPECT_EQ(property.getSize(), 3U);
    EXPECT_EQ(*property.getTypeId(), kLayout);
}

TEST(PropertyKindsTest, AllButCustomBuffersShareOneZeroIdentifier) {
    const Owned text = narrow("abc");
    const Owned bytes = buffer("abc", 3);

    EXPECT_TRUE(text->getTypeId()->isZero());
    EXPECT_EQ(text->getTypeId(), bytes->getTypeId());
    EXPECT_EQ(text->getTypeId(), NullProperty::instance().getTypeId());
}

TEST(PropertyKindsTest, CloneOfABufferOutlivesItsSource) {
    Owned source = buffer("abc", 3);
    const Owned clone(Property::clone(*source));
    const void* sourceBytes = source->getData();
    EXPECT_NE(clone->getData(), sourceBytes);

    source.reset();

    EXPECT_TRUE(clone->isOpaque());
    EXPECT_FALSE(clone->isCustom());
    ASSERT_EQ(clone->getSize(), 3U);
    EXPECT_EQ(std::memcmp(clone->getData(), "abc", 3), 0);
}

TEST(PropertyKindsTest, CloneOfACustomBufferOutlivesItsSourceAndKeepsItsLayout) {
    auto source = std::make_unique<CustomProperty>("abc", 3, kLayout);
    const Owned clone(Property::clone(*source));

    source.reset();

    EXPECT_TRUE(clone->isCustom());
    ASSERT_EQ(clone->getSize(), 3U);
    EXPECT_EQ(std::memcmp(clone->getData(), "abc", 3), 0);
    EXPECT_EQ(*clone->getTypeId(), kLayout);
}

TEST(PropertyKindsTest, CloneOfAnEmptyBufferHasNoBuffer) {
    const Owned source = buffer("", 0);
    const Owned clone(Property::clone(*source));

    EXPECT_TRUE(clone->isOpaque());
    EXPECT_EQ(clone->getData(), nullptr);
}

TEST(PropertyKindsTest, CloneOfATextSharesTheTextOfItsSource) {
    Owned source = narrow("shared");
    Owned wideSource = wide(L"shared");
    const Owned clone(Property::clone(*source));
    const Owned wideClone(Property::clone(*wideSource));
    EXPECT_EQ(clone->getData(), source->getData());
    EXPECT_EQ(wideClone->getData(), wideSource->getData());

    source.reset();
    wideSource.reset();

    EXPECT_EQ(clone->toString(), "shared");
    EXPECT_EQ(wideClone->toString(), "shared");
}

TEST(PropertyKindsTest, CloneOfAForeignTextIsACopyOfItsOwn) {
    auto source = std::make_unique<ForeignText>("a text that is too long to stand in the object");
    auto wideSource = std::make_unique<ForeignText>(L"a text that is too long for the object");

    const Owned clone(Property::clone(*source));
    const Owned wideClone(Property::clone(*wideSource));
    source.reset();
    wideSource.reset();

    EXPECT_EQ(clone->getType(), arbor::PT_STRING);
    EXPECT_EQ(clone->toString(), "a text that is too long to stand in the object");
    EXPECT_EQ(wideClone->getType(), arbor::PT_WSTRING);
    EXPECT_EQ(wideClone->toString(), "a text that is too long for the object");
}

TEST(PropertyKindsTest, CloneOfAForeignTextWithoutCharactersHasNoneEither) {
    for (const std::uint32_t type : {arbor::PT_STRING, arbor::PT_WSTRING}) {
        const Owned clone(Property::clone(ForeignText(type)));

        EXPECT_EQ(clone->getType(), type);
        EXPECT_EQ(clone->getData(), nullptr);
        EXPECT_EQ(clone->toString(), "");
    }
}

TEST(PropertyKindsTest, CloneOfACloneSharesTheTextToo) {
    Owned source = narrow("shared");
    Owned clone(Property::clone(*source));
    const Owned second(Property::clone(*clone));
    EXPECT_EQ(second->getData(), source->getData());

    source.reset();
    clone.reset();

    EXPECT_EQ(second->toString(), "shared");
}

TEST(PropertyKindsTest, CloneOfABufferKeepsItsTypeCode) {
    const test::TypedBuffer buffer(arbor::PT_WSTRING, "abc", 3);
    const TypedCustomBuffer custom("abc", 3, kLayout);

    const Owned clone(Property::clone(buffer));
    const Owned customClone(Property::clone(custom));

    EXPECT_EQ(clone->getType(), arbor::PT_WSTRING);
    EXPECT_TRUE(clone->isOpaque());
    EXPECT_EQ(customClone->getType(), TypedCustomBuffer::kOddType);
    EXPECT_TRUE(customClone->isCustom());
}

TEST(PropertyKindsTest, TextWhoseBlockWouldOverflowIsNotMade) {
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
    constexpr std::size_t kBesideTheText = sizeof(arbor::TextProperty) + sizeof(std::uint64_t);
    constexpr std::size_t kTooLong = kMost - kBesideTheText;

    for (const std::size_t beyond : {kTooLong, kTooLong + 1, kMost - 1, kMost})
        EXPECT_EQ(arbor::TextProperty::make("a", beyond), nullptr);
    for (const std::size_t beyond : {kTooLong / sizeof(wchar_t), kMost / sizeof(wchar_t), kMost})
        EXPECT_EQ(arbor::TextProperty::make(L"a", beyond), nullptr);
}

TEST(PropertyKindsTest, CloneOfANumberKeepsTypeAndValue) {
    const Owned real(Property::clone(AnyProperty(2.5F)));
    const Owned wideReal(Property::clone(AnyProperty(0.1)));
    const Owned word(Property::clone(AnyProperty(std::uint64_t{1} << 63)));
    const Owned null(Property::clone(NullProperty::instance()));

    EXPECT_EQ(real->getType(), arbor::PT_FLOAT);
    EXPECT_EQ(real->toFloat(), 2.5F);
    EXPECT_EQ(wideReal->getType(), arbor::PT_DOUBLE);
    EXPECT_EQ(wideReal->toDouble(), 0.1);
    EXPECT_EQ(word->getType(), arbor::PT_UINT64);
    EXPECT_EQ(word->toUInt64(), std::uint64_t{1} << 63);
    EXPECT_EQ(null->getType(), arbor::PT_NULL);
}
