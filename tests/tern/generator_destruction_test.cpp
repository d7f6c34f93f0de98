// A generator is destroyed while its own thread runs inside it.
#include "tern/timer_event_generator.h"
#include "tern/velo_event_generator.h"

#include "arbor/property_holder.h"
#include "platform/thread.h"
#include "tern/class_ids.h"
#include "tests/support/eventually.h"
#include "tests/support/recording_broker.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using test::eventually;

namespace {

// Holds up the thread that asks for the broker until the destruction of the generator has begun.
class HesitantManager : public test::TestManager<test::RecordingBroker> {
public:
    tern::EventBroker* getEventBroker() override {
        constexpr std::uint32_t kLongerThanADestructor = 50;
        isAsked = true;
        eventually([this] { return isLeaving.load(); });
        platform::sleepFor(kLongerThanADestructor);
        return &broker;
    }

    // Destroys the generator while its thread waits in getEventBroker().
    template <typename Generator>
    void destroyInTheMiddle(std::unique_ptr<Generator> generator) {
        generator->start();
        ASSERT_TRUE(eventually([this] { return isAsked.load(); }));
        isLeaving = true;
        generator.reset();
    }

    std::atomic<bool> isAsked{false};
    std::atomic<bool> isLeaving{false};
};

}  // namespace

TEST(GeneratorDestructionTest, TimerExistsUntilItsThreadHasPostedItsTick) {
    HesitantManager manager;
    arbor::PropertyHolder parameters;
    parameters.setInt(L"interval", 10);

    manager.destroyInTheMiddle(std::make_unique<tern::TimerEventGenerator>(parameters, &manager));

    ASSERT_EQ(manager.broker.messages().size(), 1U);
    EXPECT_EQ(manager.broker.messages()[0]->getType(), &tern::kTimerEventGeneratorId);
}

TEST(GeneratorDestructionTest, ReaderExistsUntilItsThreadHasStoppedTheBroker) {
    HesitantManager manager;
    test::setChannel(L"no such pipe", records::kPrinter);

    manager.destroyInTheMiddle(
        std::make_unique<tern::VeloEventGenerator>(arbor::PropertyHolder{}, &manager));

    EXPECT_EQ(manager.broker.stops, 1);
    EXPECT_EQ(manager.broker.stoppedBy, &tern::kVeloEventGeneratorId);
}
