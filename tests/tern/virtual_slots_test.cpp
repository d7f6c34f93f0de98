// The order of the virtual operations belongs to the design of these classes (kept: see decision
// 0012). A destructor takes two slots of the table.
#include "tests/support/slot_of.h"

#include "tern/database.h"
#include "tern/debug_listener.h"
#include "tern/event_broker.h"
#include "tern/instance_manager.h"
#include "tern/timer_event_generator.h"
#include "tern/velo_event_generator.h"
#include "tern/velo_listener.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace tern;
using arbor::Guid;
using arbor::PropertyHolder;
using platform::NativeHandle;
using test::slotOf;

namespace {

constexpr std::size_t kAfterPropertyHolder = 30;  // 28 operations and the destructor

template <typename Class>
void expectInstanceManagerSlots() {
    using W = const wchar_t*;
    using N = const char*;
    using G = const Guid*;
    using Id = std::uint32_t;
    EXPECT_EQ(slotOf(&Class::clearModules), 0U);
    EXPECT_EQ(slotOf(&Class::addModule), 1U);
    EXPECT_EQ(slotOf(&Class::getModuleCount), 2U);
    EXPECT_EQ(slotOf(&Class::getModule), 3U);
    EXPECT_EQ(slotOf(&Class::loadString), 4U);
    EXPECT_EQ((slotOf<Class, void*(W, W, Id)>(&Class::findInModules)), 5U);
    EXPECT_EQ((slotOf<Class, void*(W, W, Id, void*&)>(&Class::findInModules)), 6U);
    EXPECT_EQ(slotOf(&Class::getDatabase), 7U);
    EXPECT_EQ(slotOf(&Class::getEventBroker), 8U);
    EXPECT_EQ((slotOf<Class, bool(W, W)>(&Class::createInstance)), 9U);
    EXPECT_EQ((slotOf<Class, bool(N, N)>(&Class::createInstance)), 10U);
    EXPECT_EQ((slotOf<Class, PropertyHolder*(G, W)>(&Class::createInstanceByGuid)), 11U);
    EXPECT_EQ((slotOf<Class, PropertyHolder*(G, N)>(&Class::createInstanceByGuid)), 12U);
    EXPECT_EQ(slotOf(&Class::addComponent), 13U);
    EXPECT_EQ(slotOf(&Class::removeComponent), 14U);
    EXPECT_EQ(slotOf(&Class::run), 15U);
    EXPECT_EQ(slotOf(&Class::pumpOnce), 16U);
}

}  // namespace

TEST(TernSlotsTest, InstanceManagerOperationsStandInTheirSlots) {
    expectInstanceManagerSlots<IInstanceManager>();
    expectInstanceManagerSlots<AbstractInstanceManager>();
    expectInstanceManagerSlots<InstanceManager>();
}

TEST(TernSlotsTest, HooksOfTheInstanceManagerFollowItsDestructor) {
    EXPECT_EQ(slotOf(&AbstractInstanceManager::newModuleRecord), 19U);
    EXPECT_EQ(slotOf(&AbstractInstanceManager::initialize), 20U);
    EXPECT_EQ(slotOf(&AbstractInstanceManager::runLoop), 21U);
    EXPECT_EQ(slotOf(&AbstractInstanceManager::applyArguments), 22U);
    EXPECT_EQ(slotOf(&AbstractInstanceManager::findStringInModule), 23U);
    EXPECT_EQ(slotOf(&AbstractInstanceManager::findResourceInModule), 24U);
}

TEST(TernSlotsTest, BrokerOperationsStandInTheirSlots) {
    EXPECT_EQ(slotOf(&EventBroker::notify), 0U);
    EXPECT_EQ(slotOf(&EventBroker::publish), 3U);
    EXPECT_EQ(slotOf(&EventBroker::getInstanceManager), 4U);
    EXPECT_EQ(slotOf(&EventBroker::isReady), 5U);
    EXPECT_EQ(slotOf(&EventBroker::stop), 6U);
    EXPECT_EQ(slotOf(&EventBroker::run), 7U);
    EXPECT_EQ(slotOf(&EventBroker::post), 8U);
    EXPECT_EQ(slotOf(&EventBroker::enqueue), 9U);
    EXPECT_EQ(slotOf(&EventBroker::postExclusive), 10U);
    EXPECT_EQ(slotOf(&EventBroker::addComponent), 11U);
    EXPECT_EQ(slotOf(&EventBroker::removeComponent), 12U);
}

TEST(TernSlotsTest, ClassIdentifierFollowsTheOperationsOfTheBag) {
    EXPECT_EQ(slotOf(&AbstractEventGenerator::getClassId), kAfterPropertyHolder);
    EXPECT_EQ(slotOf(&AbstractListener::getClassId), kAfterPropertyHolder);
    EXPECT_EQ(slotOf(&TimerEventGenerator::getClassId), kAfterPropertyHolder);
    EXPECT_EQ(slotOf(&DebugListener::getClassId), kAfterPropertyHolder);
    EXPECT_EQ(slotOf(&VeloListener::getClassId), kAfterPropertyHolder);
}

TEST(TernSlotsTest, StatusGeneratorOperationsStandInTheirSlots) {
    using Generator = VeloEventGenerator;
    EXPECT_EQ(slotOf(&Generator::getClassId), kAfterPropertyHolder);
    EXPECT_EQ(slotOf(&Generator::reserveBuffer), kAfterPropertyHolder + 1);
    EXPECT_EQ(slotOf(&Generator::readInput), kAfterPropertyHolder + 2);
    EXPECT_EQ(slotOf(&Generator::discardInput), kAfterPropertyHolder + 3);
    EXPECT_EQ(slotOf(&Generator::isValidHeader), kAfterPropertyHolder + 4);
    EXPECT_EQ(slotOf(&Generator::hasInput), kAfterPropertyHolder + 5);
    EXPECT_EQ(slotOf(&Generator::readText), kAfterPropertyHolder + 6);
    EXPECT_EQ(slotOf(&Generator::findValue), kAfterPropertyHolder + 7);
    EXPECT_EQ(slotOf(&Generator::readWText), kAfterPropertyHolder + 8);
    EXPECT_EQ(slotOf(&Generator::readNumber), kAfterPropertyHolder + 9);
    EXPECT_EQ(slotOf(&Generator::buildMessage), kAfterPropertyHolder + 10);
}

TEST(TernSlotsTest, DatabaseNamesItsInstanceManagerAfterEverythingElse) {
    // In this ABI the overrides of the second base class are in the first table as well.
    constexpr std::size_t kDatabaseOperations = 19;

    EXPECT_EQ(slotOf(&Database::getInstanceManager), kAfterPropertyHolder + kDatabaseOperations);
}
