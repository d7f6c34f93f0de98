// Memory and the platform fail at every place in turn, for the broker, the instance manager and the
// reading of records.
#include "tern/event_broker.h"
#include "tern/instance_manager.h"

#include "arbor/abstract_thread.h"
#include "arbor/property.h"
#include "platform/simulated/world.h"
#include "tern/class_ids.h"
#include "tests/fault_injection/faults_fixture.h"
#include "tests/fault_injection/reading_under_faults.h"
#include "tests/support/records.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

using arbor::Guid;
using fault_injection::everyAllocation;
using fault_injection::Mode;
using fault_injection::Reading;
using platform::simulated::Call;
using platform::simulated::world;
using test::ListenerComponent;

namespace {

constexpr Guid kType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

bool passes(arbor::IMessage&) {
    return false;
}

class TernFaultsTest : public fault_injection::FaultsTest {
protected:
    void SetUp() override { world().reset(); }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, TernFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

TEST_P(TernFaultsTest, MessageThatCannotBePostedIsNotQueued) {
    std::unique_ptr<test::TestManager<>> manager;
    bool posted = false;
    int heard = 0;
    failEachAllocation(
        [&] {
            manager = std::make_unique<test::TestManager<>>();
            manager->onPump = [&] { manager->broker.stop(nullptr, 0); };
            manager->broker.addComponent(new ListenerComponent([&](arbor::IMessage&) {
                ++heard;
                return false;
            }));
            posted = false;
            heard = 0;
            return [&] { posted = manager->broker.post(&kType, 1, 0, nullptr); };
        },
        [&](long failed) {
            EXPECT_EQ(posted, failed == 0);
            manager->broker.run();
            EXPECT_EQ(heard, posted ? 1 : 0);
            manager.reset();
        },
        1);
}

TEST_P(TernFaultsTest, QueueThatCannotGrowDropsTheMessageAndKeepsTheOthers) {
    constexpr int kMessages = 200;  // more than the first block of the queue holds
    std::unique_ptr<test::TestManager<>> manager;
    int accepted = 0;
    int heard = 0;
    failEachAllocation(
        [&] {
            manager = std::make_unique<test::TestManager<>>();
            manager->onPump = [&] { manager->broker.stop(nullptr, 0); };
            manager->broker.addComponent(new ListenerComponent([&](arbor::IMessage&) {
                ++heard;
                return false;
            }));
            accepted = heard = 0;
            return [&] {
                for (int number = 0; number < kMessages; ++number) {
                    if (manager->broker.post(&kType, 1, 0, nullptr)) ++accepted;
                }
            };
        },
        [&](long) {
            manager->broker.run();
            EXPECT_EQ(heard, accepted);
            manager.reset();
        },
        kMessages);
}

TEST_P(TernFaultsTest, ComponentIsTakenWholeOrNotAtAll) {
    constexpr int kComponents = 10;  // more than the inline storage of the broker's arrays holds
    std::unique_ptr<test::TestManager<>> manager;
    std::vector<std::unique_ptr<ListenerComponent>> offered;
    std::vector<ListenerComponent*> taken;
    test::CountingThread thread;
    failEachAllocation(
        [&] {
            thread.starts = 0;
            manager = std::make_unique<test::TestManager<>>();
            manager->onPump = [&] { manager->broker.stop(nullptr, 0); };
            taken.clear();
            taken.reserve(kComponents);
            for (int number = 0; number < kComponents; ++number) {
                offered.push_back(std::make_unique<ListenerComponent>(passes));
                offered.back()->setPointer(L"thread", static_cast<arbor::IThread*>(&thread));
            }
            return [&] {
                for (auto& component : offered) {
                    if (!manager->broker.addComponent(component.get())) continue;
                    taken.push_back(component.release());
                }
            };
        },
        [&](long failed) {
            if (failed == 0) {
                EXPECT_EQ(taken.size(), static_cast<std::size_t>(kComponents));
            }
            for (const auto& refused : offered) {
                if (refused) {
                    EXPECT_FALSE(refused->hasProperty(L"eventBroker"));
                }
            }
            offered.clear();  // destroy the refused ones: if the broker called one, it would crash
            manager->broker.post(&kType, 1, 0, nullptr);
            manager->broker.run();
            for (const ListenerComponent* component : taken)
                EXPECT_EQ(component->heard, 1);
            manager.reset();
            std::vector<ListenerComponent*>().swap(taken);
            std::vector<std::unique_ptr<ListenerComponent>>().swap(offered);
        },
        5);
}

TEST_P(TernFaultsTest, ThreadOfARefusedComponentIsNeverStartedThoughItHasAsked) {
    constexpr std::size_t kComponents = 10;  // more than the broker's inline storage holds
    std::array<test::CountingThread, kComponents> threads;
    std::unique_ptr<test::TestManager<>> manager;
    std::vector<std::unique_ptr<ListenerComponent>> offered;
    failEachAllocation(
        [&] {
            manager = std::make_unique<test::TestManager<>>();
            manager->onPump = [&] { manager->broker.stop(nullptr, 0); };
            for (test::CountingThread& thread : threads) {
                thread.starts = 0;
                offered.push_back(std::make_unique<ListenerComponent>(passes));
                offered.back()->setPointer(L"thread", static_cast<arbor::IThread*>(&thread));
                arbor::AbstractThread::ThreadMessage asks(arbor::ThreadCode::StartRequest, &thread);
                EXPECT_TRUE(manager->broker.notify(&asks));
            }
            return [&] {
                for (auto& component : offered) {
                    if (!manager->broker.addComponent(component.get())) continue;
                    static_cast<void>(component.release());
                }
            };
        },
        [&](long) {
            manager->broker.run();
            for (std::size_t index = 0; index < kComponents; ++index)
                EXPECT_EQ(threads[index].starts, offered[index] != nullptr ? 0 : 2);
            manager.reset();
            std::vector<std::unique_ptr<ListenerComponent>>().swap(offered);
        },
        3);
}

TEST_P(TernFaultsTest, InstanceManagerIsWholeOrNull) {
    tern::IInstanceManager* manager = nullptr;
    failEachAllocation([&] { return [&] { manager = tern::NewInstanceManager("", 0, nullptr); }; },
                       [&](long failed) {
                           // A mutex that cannot be created does nothing, and the manager works
                           // without it. Every other failure gives no manager.
                           if (failed == 0) {
                               ASSERT_NE(manager, nullptr);
                           }
                           if (manager != nullptr) {
                               for (const char* name : {"TimerEventGenerator", "DebugListener",
                                                        "VeloEventGenerator", "VeloListener"}) {
                                   Guid guid;
                                   manager->getDatabase()->getGuid(guid, name);
                                   EXPECT_FALSE(guid.isZero()) << name << failed;
                               }
                           }
                           tern::TERN_DeleteInstanceManager(manager);
                       },
                       16);
}

// The Windows program has the system's threads and locks, which cannot be made to fail.
#if !defined(_WIN32)
TEST_P(TernFaultsTest, ComponentIsCreatedAndAddedOrNothingIsLeftOfIt) {
    tern::IInstanceManager* manager = nullptr;
    bool created = false;
    failEachAllocation(
        [&] {
            // No thread can be started, so only this thread allocates and frees memory.
            world().faults.reset();
            EXPECT_TRUE(world().faults.add({Call::ThreadStart, 1, true}));
            manager = tern::NewInstanceManager("", 0, nullptr);
            created = false;
            return [&] {
                created = manager->createInstance("VeloEventGenerator",
                                                  "inputPipe=nowhere printerid=7 some=argument");
            };
        },
        [&](long failed) {
            if (failed == 0) {
                EXPECT_TRUE(created);
            }
            // Run at least one idle turn. It starts the waiting threads and would crash if one of
            // them belonged to a component that is gone.
            manager->getEventBroker()->addComponent(new ListenerComponent(passes));
            world().messages.post([&] { manager->getEventBroker()->stop(nullptr, 0); });
            EXPECT_EQ(manager->run(), 0U);
            tern::TERN_DeleteInstanceManager(manager);
        },
        5);
}
#endif

TEST_P(TernFaultsTest, RecordIsDeliveredOrTheChannelEnds) {
    const std::string bytes = records::record(2, 3, records::number(41100));
    std::unique_ptr<Reading> reading;
    failEachAllocation(
        [&] {
            reading = std::make_unique<Reading>(bytes + bytes);
            return [&] { reading->generator->runOnThisThread(); };
        },
        [&](long failed) {
            EXPECT_EQ(reading->manager.broker.stops, 1) << failed;
            if (failed == 0) {
                EXPECT_EQ(reading->manager.broker.whole, 2);
            }
            if (reading->generator->refusals != 0) {
                EXPECT_LT(reading->manager.broker.messages, 2);
            }
            reading.reset();
        },
        5);
}

TEST_P(TernFaultsTest, BufferThatFindsNoMemoryHasNoBytes) {
    std::unique_ptr<Reading> reading;
    tern::VeloEventGenerator::Buffer buffer;
    std::uint32_t usable = 0;
    failEachAllocation(
        [&] {
            reading = std::make_unique<Reading>("");
            buffer.reset(new unsigned char[10]);
            return [&] { usable = reading->generator->reserveBuffer(buffer, 10, 20); };
        },
        [&](long failed) {
            EXPECT_EQ(usable, failed == 0 ? 20U : 0U);
            EXPECT_EQ(buffer != nullptr, failed == 0);
            buffer.reset();
            reading.reset();
        },
        1);
}

TEST(RecordWithoutMemoryTest, BodyWithoutMemoryReadsAsDefaultsAndTheNextRecordIsWhole) {
    const std::string bytes = records::record(2, 3, records::number(41100));
    std::unique_ptr<Reading> reading;
    int withDefaults = 0;
    const auto outcome = everyAllocation(
        Mode::Once,
        [&] {
            world().reset();
            reading = std::make_unique<Reading>(bytes + bytes);
            return [&] { reading->generator->runOnThisThread(); };
        },
        [&](long failed) {
            const auto& broker = reading->manager.broker;
            if (failed != 0 && broker.messages == 2 && broker.whole == 1) ++withDefaults;
            reading.reset();
        });

    EXPECT_EQ(outcome.leakedAt, 0);
    EXPECT_EQ(withDefaults, 1);  // only one allocation is the first record's body
}

TEST(RecordWithoutMemoryTest, OemBlockWithoutMemoryArrivesEmpty) {
    const std::string bytes = records::record(1, 0, "block");
    std::unique_ptr<Reading> reading;
    int emptyBlocks = 0;
    const auto outcome = everyAllocation(
        Mode::Once,
        [&] {
            world().reset();
            reading = std::make_unique<Reading>(bytes);
            return [&] { reading->generator->runOnThisThread(); };
        },
        [&](long failed) {
            const auto& broker = reading->manager.broker;
            if (failed == 0) {
                EXPECT_EQ(broker.blockBytes, 5);
            }
            if (broker.messages == 1 && broker.blockBytes == 0 && !broker.hasBlock) ++emptyBlocks;
            reading.reset();
        });

    EXPECT_EQ(outcome.leakedAt, 0);
    EXPECT_EQ(emptyBlocks, 2);  // once for the record's body, once for the copy of its block
}

TEST_P(TernFaultsTest, WideTextIsCopiedOnceAsANarrowOneIs) {
    const auto allocations = [](std::uint32_t subcode, const std::string& name) {
        std::unique_ptr<Reading> reading;
        const auto scene = [&] {
            reading =
                std::make_unique<Reading>(records::record(0, subcode, records::number(1) + name));
            return [&] { reading->generator->runOnThisThread(); };
        };
        return everyAllocation(Mode::Once, scene, [&](long) { reading.reset(); }).points;
    };

    EXPECT_EQ(allocations(tern::kDocumentStartWide, records::wideText(std::u16string(300, u'n'))),
              allocations(tern::kDocumentStartNarrow, records::text(std::string(300, 'n'))));
}

TEST_P(TernFaultsTest, TextsWideTextsAndBlocksSurviveEveryFailure) {
    const std::string name(300, 'n');
    const std::string bytes =
        records::record(0, 0, records::text(name) + records::text(name)) +
        records::record(0, 3, records::number(1) + records::wideText(std::u16string(300, u'n'))) +
        records::record(1, 0, name) + records::record(2, 11, records::text("SerialNumber=5\n")) +
        records::record(2, 18, records::text("DISPLAY=\"A4\""));
    std::unique_ptr<Reading> reading;
    failEachAllocation(
        [&] {
            reading = std::make_unique<Reading>(bytes);
            return [&] { reading->generator->runOnThisThread(); };
        },
        [&](long failed) {
            EXPECT_EQ(reading->manager.broker.stops, 1) << failed;
            if (failed == 0) {
                EXPECT_EQ(reading->manager.broker.messages, 5);
            }
            reading.reset();
        },
        10);
}
