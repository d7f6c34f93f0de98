// The order of the virtual operations belongs to the design of these classes (kept: see decision
// 0012). A destructor takes two slots of the table.
#include "tests/support/slot_of.h"

#include "arbor/abstract_database.h"
#include "arbor/abstract_property_holder.h"
#include "arbor/abstract_thread.h"
#include "arbor/i_database.h"
#include "arbor/i_listener.h"
#include "arbor/property.h"
#include "arbor/property_holder.h"
#include "arbor/simple_message.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace arbor;
using test::slotOf;

namespace {

template <typename Class>
void expectPropertySlots() {
    EXPECT_EQ((slotOf<Class, void*() const>(&Class::getData)), 0U);
    EXPECT_EQ((slotOf<Class, std::string&(std::string&, IProperty::StringFunctor&) const>(
                  &Class::toString)),
              1U);
    EXPECT_EQ((slotOf<Class, std::string() const>(&Class::toString)), 2U);
    EXPECT_EQ((slotOf<Class, std::int32_t(IProperty::Functor<int>&) const>(&Class::toInt)), 3U);
    EXPECT_EQ((slotOf<Class, std::int32_t() const>(&Class::toInt)), 4U);
    EXPECT_EQ((slotOf<Class, float(IProperty::Functor<float>&) const>(&Class::toFloat)), 5U);
    EXPECT_EQ((slotOf<Class, float() const>(&Class::toFloat)), 6U);
    EXPECT_EQ((slotOf<Class, double(IProperty::Functor<double>&) const>(&Class::toDouble)), 7U);
    EXPECT_EQ((slotOf<Class, double() const>(&Class::toDouble)), 8U);
    EXPECT_EQ(
        (slotOf<Class, std::uint64_t(IProperty::Functor<std::uint64_t>&) const>(&Class::toUInt64)),
        9U);
    EXPECT_EQ((slotOf<Class, std::uint64_t() const>(&Class::toUInt64)), 10U);
    EXPECT_EQ(slotOf(&Class::isSimple), 11U);
    EXPECT_EQ(slotOf(&Class::isOpaque), 12U);
    EXPECT_EQ(slotOf(&Class::isCustom), 13U);
    EXPECT_EQ(slotOf(&Class::isNull), 14U);
    EXPECT_EQ(slotOf(&Class::getType), 15U);
    EXPECT_EQ(slotOf(&Class::getSize), 16U);
    EXPECT_EQ(slotOf(&Class::getTypeId), 17U);
}

// The operation with a wide key must be at `slot`, the one with a narrow key directly after it.
template <typename Class, typename Wide, typename Narrow>
void expectTwins(Wide Class::*wide, Narrow Class::*narrow, std::size_t slot) {
    EXPECT_EQ(slotOf(wide), slot);
    EXPECT_EQ(slotOf(narrow), slot + 1);
}

template <typename Class>
void expectPropertyHolderSlots() {
    using W = const wchar_t*;
    using N = const char*;
    using Size = std::uint64_t;
    expectTwins<Class, IProperty*(W) const, IProperty*(N) const>(&Class::getProperty,
                                                                 &Class::getProperty, 0);
    expectTwins<Class, bool(W) const, bool(N) const>(&Class::hasProperty, &Class::hasProperty, 2);
    expectTwins<Class, bool(W, void*), bool(N, void*)>(&Class::setPointer, &Class::setPointer, 4);
    expectTwins<Class, bool(W, std::int32_t), bool(N, std::int32_t)>(&Class::setInt, &Class::setInt,
                                                                     6);
    expectTwins<Class, bool(W, const void*, Size), bool(N, const void*, Size)>(
        &Class::setOpaque, &Class::setOpaque, 8);
    expectTwins<Class, bool(W, W), bool(N, W)>(&Class::setWString, &Class::setWString, 10);
    expectTwins<Class, bool(W, N), bool(N, N)>(&Class::setString, &Class::setString, 12);
    expectTwins<Class, bool(W, const IProperty*), bool(N, const IProperty*)>(
        &Class::setProperty, &Class::setProperty, 14);
    expectTwins<Class, bool(W), bool(N)>(&Class::removeProperty, &Class::removeProperty, 16);
    expectTwins<Class, std::int32_t(W, std::int32_t) const, std::int32_t(N, std::int32_t) const>(
        &Class::getInt, &Class::getInt, 18);
    expectTwins<Class, void*(W, Size*, void*) const, void*(N, Size*, void*) const>(
        &Class::getOpaque, &Class::getOpaque, 20);
    expectTwins<Class, void*(W, void*) const, void*(N, void*) const>(&Class::getPointer,
                                                                     &Class::getPointer, 22);
    expectTwins<Class, std::string(W, N) const, std::string(N, N) const>(&Class::getString,
                                                                         &Class::getString, 24);
    EXPECT_EQ((slotOf<Class, bool(W, IProperty*)>(&Class::adoptProperty)), 26U);
    EXPECT_EQ((slotOf<Class, bool(W, IProperty*)>(&Class::setPropertyAndDelete)), 27U);
}

template <typename Class>
void expectMessageSlots() {
    EXPECT_EQ(slotOf(&Class::getType), 0U);
    EXPECT_EQ(slotOf(&Class::getCode), 1U);
    EXPECT_EQ(slotOf(&Class::getFlags), 2U);
    EXPECT_EQ(slotOf(&Class::setFlags), 3U);
    EXPECT_EQ(slotOf(&Class::isExclusive), 4U);
    using Bag =
        decltype(std::declval<Class&>().getProperties());  // a class may know more of its bag
    EXPECT_EQ((slotOf<Class, Bag()>(&Class::getProperties)), 5U);
    EXPECT_EQ((slotOf<Class, Bag() const>(&Class::getProperties)), 6U);
}

template <typename Class>
void expectThreadSlots() {
    EXPECT_EQ(slotOf(&Class::start), 0U);
    EXPECT_EQ(slotOf(&Class::isFinished), 1U);
    EXPECT_EQ(slotOf(&Class::wait), 2U);
    EXPECT_EQ(slotOf(&Class::reserved4), 3U);
    EXPECT_EQ(slotOf(&Class::reserved5), 4U);
    EXPECT_EQ(slotOf(&Class::reserved6), 5U);
    EXPECT_EQ(slotOf(&Class::reserved7), 6U);
    EXPECT_EQ(slotOf(&Class::getHandle), 7U);
    EXPECT_EQ(slotOf(&Class::addObserver), 8U);
    EXPECT_EQ(slotOf(&Class::removeObserver), 9U);
    EXPECT_EQ(slotOf(&Class::getThreadId), 10U);
}

}  // namespace

TEST(ArborSlotsTest, PropertyOperationsStandInTheirSlots) {
    expectPropertySlots<IProperty>();
    expectPropertySlots<Property>();
}

TEST(ArborSlotsTest, FallbackFunctorsBeginWithTheirCallOperation) {
    EXPECT_EQ(slotOf(&IProperty::Functor<int>::operator()), 0U);
    EXPECT_EQ(slotOf(&IProperty::Functor<float>::operator()), 0U);
    EXPECT_EQ(slotOf(&IProperty::Functor<double>::operator()), 0U);
    EXPECT_EQ(slotOf(&IProperty::Functor<std::uint64_t>::operator()), 0U);
    EXPECT_EQ(slotOf(&IProperty::StringFunctor::operator()), 0U);
    EXPECT_EQ(slotOf(&Property::OpaqueStringFunctor::operator()), 0U);
}

TEST(ArborSlotsTest, PropertyHolderHasTwentyEightOperationsInTheirSlots) {
    expectPropertyHolderSlots<IPropertyHolder>();
    expectPropertyHolderSlots<AbstractPropertyHolder>();
}

TEST(ArborSlotsTest, DictionaryAllocatesSymbolsThenNotesThem) {
    using Dictionary = dictionary<std::wstring, IProperty*, int, 2147483647, 1>;

    EXPECT_EQ(slotOf(&Dictionary::allocateSymbol), 0U);
    EXPECT_EQ(slotOf(&Dictionary::noteSymbol), 1U);
}

TEST(ArborSlotsTest, MessageOperationsStandInTheirSlots) {
    expectMessageSlots<IMessage>();
    expectMessageSlots<Message>();
    expectMessageSlots<SimpleMessage>();
    expectMessageSlots<AbstractThread::ThreadMessage>();
}

TEST(ArborSlotsTest, ListenerBeginsWithNotify) {
    EXPECT_EQ(slotOf(&IListener::notify), 0U);
}

TEST(ArborSlotsTest, ThreadOperationsStandInTheirSlots) {
    expectThreadSlots<IThread>();
    expectThreadSlots<AbstractThread>();
    EXPECT_EQ(slotOf(&AbstractThread::run), 13U);
    EXPECT_EQ(slotOf(&AbstractThread::notifyObservers), 14U);
    EXPECT_EQ(slotOf(&AbstractThread::requestStart), 15U);
    EXPECT_EQ(slotOf(&AbstractThread::notifyFinished), 16U);
}

TEST(ArborSlotsTest, CompoundKeyBeginsWithToString) {
    EXPECT_EQ(slotOf(&IDatabase::CompoundKey::toString), 0U);
}

TEST(ArborSlotsTest, DatabaseOperationsStandInTheirSlots) {
    using W = const wchar_t*;
    using Id = std::uint32_t;
    using Observer = DatabaseObserver*;
    using D = IDatabase;
    EXPECT_EQ(slotOf(&D::isReady), 0U);
    EXPECT_EQ((slotOf<D, bool(W, W)>(&D::contains)), 1U);
    EXPECT_EQ((slotOf<D, bool(W)>(&D::contains)), 2U);
    EXPECT_EQ((slotOf<D, bool(Id)>(&D::contains)), 3U);
    EXPECT_EQ(slotOf(&D::getId), 4U);
    EXPECT_EQ((slotOf<D, IProperty*(W, W)>(&D::get)), 5U);
    EXPECT_EQ((slotOf<D, IProperty*(W)>(&D::get)), 6U);
    EXPECT_EQ((slotOf<D, IProperty*(Id)>(&D::get)), 7U);
    EXPECT_EQ((slotOf<D, bool(W, W, IProperty*, Observer)>(&D::set)), 8U);
    EXPECT_EQ((slotOf<D, bool(W, IProperty*, Observer)>(&D::set)), 9U);
    EXPECT_EQ((slotOf<D, bool(Id, IProperty*, Observer)>(&D::set)), 10U);
    EXPECT_EQ((slotOf<D, bool(W, W)>(&D::remove)), 11U);
    EXPECT_EQ((slotOf<D, bool(W)>(&D::remove)), 12U);
    EXPECT_EQ((slotOf<D, bool(Id)>(&D::remove)), 13U);
    EXPECT_EQ((slotOf<D, void(Observer)>(&D::addObserver)), 14U);
    EXPECT_EQ((slotOf<D, void(Observer, W)>(&D::addObserver)), 15U);
    EXPECT_EQ(slotOf(&D::removeObserver), 16U);
    EXPECT_EQ((slotOf<D, void(Guid&, W)>(&D::getGuid)), 17U);
    EXPECT_EQ((slotOf<D, void(Guid&, const char*)>(&D::getGuid)), 18U);
}
