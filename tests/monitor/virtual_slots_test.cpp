// The order of the virtual operations belongs to the design of the listener (kept: see decision
// 0012). These tests fail when an operation moves.
#include "tests/support/slot_of.h"

#include "monitor/default_lms_listener.h"

#include <gtest/gtest.h>

using test::slotOf;
using Listener = DefaultLMSListener;

namespace {

// Before the first handler there are 28 operations of the bag, two slots of its destructor, the
// class identifier and notify(). In this ABI the override of an operation of the second base class
// is in the first table as well.
constexpr std::size_t kFirst = 32;

}  // namespace

TEST(ListenerSlotsTest, HandlersStandInTheirSlots) {
    EXPECT_EQ(slotOf(&Listener::showDialogType0), kFirst + 0);
    EXPECT_EQ(slotOf(&Listener::showMediaAlert), kFirst + 1);
    EXPECT_EQ(slotOf(&Listener::showDialogType2), kFirst + 2);
    EXPECT_EQ(slotOf(&Listener::showDialogType3), kFirst + 3);
    EXPECT_EQ(slotOf(&Listener::showTonerLow), kFirst + 4);
    EXPECT_EQ(slotOf(&Listener::showTonerOut), kFirst + 5);
    EXPECT_EQ(slotOf(&Listener::showDialogType5), kFirst + 6);
    EXPECT_EQ(slotOf(&Listener::showDialogType6), kFirst + 7);
    EXPECT_EQ(slotOf(&Listener::showDialogType7), kFirst + 8);
    EXPECT_EQ(slotOf(&Listener::showDialogType8), kFirst + 9);
    EXPECT_EQ(slotOf(&Listener::showDialogType29), kFirst + 10);
    EXPECT_EQ(slotOf(&Listener::showDialogType9), kFirst + 11);
    EXPECT_EQ(slotOf(&Listener::showDialogType10), kFirst + 12);
    EXPECT_EQ(slotOf(&Listener::showDialogType11), kFirst + 13);
    EXPECT_EQ(slotOf(&Listener::showDialogType14), kFirst + 14);
    EXPECT_EQ(slotOf(&Listener::showDialogType15), kFirst + 15);
    EXPECT_EQ(slotOf(&Listener::showDialogType16), kFirst + 16);
    EXPECT_EQ(slotOf(&Listener::showDialogType17), kFirst + 17);
    EXPECT_EQ(slotOf(&Listener::showDialogType18), kFirst + 18);
    EXPECT_EQ(slotOf(&Listener::showDialogType12), kFirst + 19);
    EXPECT_EQ(slotOf(&Listener::showDialogType19), kFirst + 20);
    EXPECT_EQ(slotOf(&Listener::showDialogType20), kFirst + 21);
    EXPECT_EQ(slotOf(&Listener::showDialogType21), kFirst + 22);
    EXPECT_EQ(slotOf(&Listener::showDialogType23), kFirst + 23);
    EXPECT_EQ(slotOf(&Listener::showDialogType22), kFirst + 24);
    EXPECT_EQ(slotOf(&Listener::showDialogType24), kFirst + 25);
    EXPECT_EQ(slotOf(&Listener::setCartData), kFirst + 26);
    EXPECT_EQ(slotOf(&Listener::showDialogType26), kFirst + 27);
    EXPECT_EQ(slotOf(&Listener::showDialogType27), kFirst + 28);
    EXPECT_EQ(slotOf(&Listener::showGenericStatus), kFirst + 29);
}

TEST(ListenerSlotsTest, ChannelOperationsFollowTheHandlers) {
    EXPECT_EQ(slotOf(&Listener::configurePrinter), kFirst + 30);
    EXPECT_EQ(slotOf(&Listener::onEndDocument), kFirst + 31);
    EXPECT_EQ(slotOf(&Listener::launchCompanion), kFirst + 32);
    EXPECT_EQ(slotOf(&Listener::showDialogType32), kFirst + 33);
}
