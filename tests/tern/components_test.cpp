// The small components: the timer, the debug listener, the output listener and their base classes.
#include "tern/debug_listener.h"
#include "tern/timer_event_generator.h"
#include "tern/velo_listener.h"

#include "arbor/message.h"
#include "arbor/simple_message.h"
#include "system.h"
#include "tern/class_ids.h"
#include "tests/support/eventually.h"
#include "tests/support/recording_broker.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <string>

using arbor::Guid;
using arbor::Message;
using arbor::PropertyHolder;
using arbor::SimpleMessage;
using tern::DebugListener;
using tern::TimerEventGenerator;
using tern::VeloListener;

namespace {

constexpr Guid kOtherType{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr std::size_t kPrefixUnits = 9;  // the length of the prefix \\.\pipe\ of a path

class BareListener : public tern::AbstractListener {
public:
    const Guid* getClassId() const override { return &kOtherType; }
};

// Records the times of the first ticks, on the thread that posts them.
class TimedBroker : public tern::EventBroker {
public:
    static constexpr std::size_t kTicks = 10;

    using EventBroker::EventBroker;
    bool enqueue(tern::MessageReference) override {
        if (ticks == kTicks) return true;
        times[ticks] = std::chrono::steady_clock::now();
        ++ticks;
        return true;
    }

    std::array<std::chrono::steady_clock::time_point, kTicks> times{};
    std::atomic<std::size_t> ticks{0};
};

std::uint32_t intervalFor(const PropertyHolder& parameters) {
    test::TestManager<> manager;
    return TimerEventGenerator(parameters, &manager).intervalMs();
}
std::uint32_t intervalFor(std::int32_t wanted) {
    PropertyHolder parameters;
    parameters.setInt(L"interval", wanted);
    return intervalFor(parameters);
}

struct VeloListenerTest : testing::Test {
    std::unique_ptr<VeloListener> listenerOf(const std::wstring& pipe) {
        PropertyHolder parameters;
        parameters.setWString(L"outputPipe", pipe.c_str());
        return std::make_unique<VeloListener>(parameters, nullptr);
    }

    contract::PipeServer server{test::newPipeName()};
    std::unique_ptr<VeloListener> listener = listenerOf(server.path().substr(kPrefixUnits));
};

}  // namespace

TEST(TimerEventGeneratorTest, IntervalIsLimitedToTenMillisecondsAndADay) {
    EXPECT_EQ(intervalFor(0), 10U);
    EXPECT_EQ(intervalFor(5), 10U);
    EXPECT_EQ(intervalFor(-5), 10U);
    EXPECT_EQ(intervalFor(10), 10U);
    EXPECT_EQ(intervalFor(11), 11U);
    EXPECT_EQ(intervalFor(86400000), 86400000U);
    EXPECT_EQ(intervalFor(100000000), 86400000U);
}

TEST(TimerEventGeneratorTest, IntervalIsAMinuteByDefault) {
    EXPECT_EQ(intervalFor(PropertyHolder{}), 60000U);
}

TEST(TimerEventGeneratorTest, IntervalThatIsNoNumberReadsAsItsConversion) {
    PropertyHolder parameters;
    parameters.setWString(L"interval", L"0x20");
    EXPECT_EQ(intervalFor(parameters), 32U);
    parameters.setWString(L"interval", L"soon");
    EXPECT_EQ(intervalFor(parameters), 10U);
}

TEST(TimerEventGeneratorTest, EveryTickIsASimpleMessageWithTheSharedEmptyBag) {
    test::TestManager<test::RecordingBroker> manager;
    PropertyHolder parameters;
    parameters.setInt(L"interval", 10);
    {
        TimerEventGenerator timer(parameters, &manager);
        timer.start();
        ASSERT_TRUE(test::eventually([&] { return manager.broker.messages().size() >= 2; }));
        EXPECT_FALSE(timer.isFinished());
    }

    SimpleMessage any(&kOtherType, 0, 0);
    for (const auto& tick : manager.broker.messages()) {
        EXPECT_EQ(tick->getType(), &tern::kTimerEventGeneratorId);
        EXPECT_EQ(tick->getCode(), 123U);
        EXPECT_EQ(tick->getFlags(), 0U);
        EXPECT_EQ(tick->getProperties(), any.getProperties());
    }
}

TEST(TimerEventGeneratorTest, TicksAreNoCloserThanTheInterval) {
    constexpr std::int32_t kIntervalMs = 40;
    constexpr std::chrono::milliseconds kAtLeast{30};  // clocks of the system may differ by a tick
    PropertyHolder parameters;
    parameters.setInt(L"interval", kIntervalMs);
    test::TestManager<TimedBroker> manager;
    {
        TimerEventGenerator timer(parameters, &manager);
        timer.start();
        ASSERT_TRUE(test::eventually([&] { return manager.broker.ticks == TimedBroker::kTicks; }));
    }

    for (std::size_t tick = 1; tick < TimedBroker::kTicks; ++tick)
        EXPECT_GE(manager.broker.times[tick] - manager.broker.times[tick - 1], kAtLeast);
}

TEST(TimerEventGeneratorTest, FirstTickComesAfterTheFirstInterval) {
    test::TestManager<test::RecordingBroker> slowManager;
    test::TestManager<test::RecordingBroker> fastManager;
    PropertyHolder aDay;
    aDay.setInt(L"interval", 86400000);
    PropertyHolder shortest;
    shortest.setInt(L"interval", 10);
    TimerEventGenerator slow(aDay, &slowManager);
    TimerEventGenerator fast(shortest, &fastManager);

    slow.start();
    fast.start();
    ASSERT_TRUE(test::eventually([&] { return fastManager.broker.messages().size() >= 3; }));

    EXPECT_TRUE(slowManager.broker.messages().empty());
}

TEST(TimerEventGeneratorTest, AsksItsControllerToStartItsThread) {
    test::TestManager<> manager;
    struct Observer : arbor::IListener {
        bool notify(arbor::IMessage* message) override {
            code = message->getCode();
            return true;
        }
        std::uint32_t code = 0;
    } observer;
    PropertyHolder parameters;
    parameters.setPointer(L"threadControl", static_cast<arbor::IListener*>(&observer));

    const TimerEventGenerator timer(parameters, &manager);

    EXPECT_EQ(observer.code, 1U);
    EXPECT_EQ(timer.getClassId(), &tern::kTimerEventGeneratorId);
}

TEST(ListenerComponentsTest, DebugListenerAndBaseTakeNothing) {
    PropertyHolder parameters;
    DebugListener debug(parameters, nullptr);
    BareListener bare;
    SimpleMessage simple(&kOtherType, 0xFFFFFFFF, 1);
    Message message(&kOtherType, 0, 0);

    for (arbor::IMessage* each :
         {static_cast<arbor::IMessage*>(&simple), static_cast<arbor::IMessage*>(&message)}) {
        EXPECT_FALSE(debug.notify(each));
        EXPECT_FALSE(bare.notify(each));
    }
    EXPECT_EQ(debug.getClassId(), &tern::kDebugListenerId);
}

TEST(ListenerComponentsTest, ListenerCarriesItselfInItsBag) {
    BareListener bare;

    EXPECT_EQ(bare.getPointer(L"listener", nullptr), static_cast<arbor::IListener*>(&bare));
}

TEST_F(VeloListenerTest, APipeNameThatDoesNotFitItsPathOpensNoOtherPipe) {
    const contract::PipeServer sameBeginning{std::wstring(250, L'x')};

    const auto refused = listenerOf(std::wstring(251, L'x'));

    EXPECT_NE(platform::openPipeForReading(sameBeginning.path().c_str()), platform::invalidHandle())
        << "nobody has opened it yet";
}

TEST_F(VeloListenerTest, MessageOfItsTypeIsOneRecordWithoutABody) {
    Message message(listener->getClassId(), 2, 0);
    message.getProperties()->setInt(L"subcode", 7);

    EXPECT_FALSE(listener->notify(&message));

    const std::string written = server.received(20);
    ASSERT_EQ(written.size(), 20U);
    EXPECT_EQ(written.substr(0, 12), std::string("VELO\x02\0\0\0\x07\0\0\0", 12));
    EXPECT_EQ(written.substr(16), std::string(4, '\0'));
}

TEST_F(VeloListenerTest, MessageWithoutASubcodeWritesZero) {
    SimpleMessage message(&tern::kVeloListenerId, 1, 0);

    EXPECT_FALSE(listener->notify(&message));

    EXPECT_EQ(server.received(20).substr(4, 8), std::string("\x01\0\0\0\0\0\0\0", 8));
}

TEST_F(VeloListenerTest, MessageOfAnotherTypeIsNotWritten) {
    SimpleMessage other(&tern::kVeloEventGeneratorId, 1, 0);
    SimpleMessage own(&tern::kVeloListenerId, 2, 0);

    EXPECT_FALSE(listener->notify(&other));
    EXPECT_FALSE(listener->notify(&own));

    EXPECT_EQ(server.received(20)[4], '\x02');  // the first thing that was written
}

TEST_F(VeloListenerTest, EveryPartOfTheTypeIsCompared) {
    Guid nearly[3] = {tern::kVeloListenerId, tern::kVeloListenerId, tern::kVeloListenerId};
    nearly[0].data1 ^= 0x80000000;
    nearly[1].data3 ^= 1;
    nearly[2].data4[7] ^= 1;
    SimpleMessage own(&tern::kVeloListenerId, 2, 0);

    for (const Guid& type : nearly) {
        SimpleMessage other(&type, 1, 0);
        EXPECT_FALSE(listener->notify(&other));
    }
    EXPECT_FALSE(listener->notify(&own));

    EXPECT_EQ(server.received(20)[4], '\x02');  // the first thing that was written
}

TEST_F(VeloListenerTest, FailedWritesAreIgnored) {
    SimpleMessage own(&tern::kVeloListenerId, 2, 0);
    server.close();

    EXPECT_FALSE(listener->notify(&own));
    EXPECT_FALSE(listener->notify(&own));
}

TEST_F(VeloListenerTest, ListenerWithoutAPipeStaysSilent) {
    const auto silent = listenerOf(L"no such pipe");
    SimpleMessage own(&tern::kVeloListenerId, 2, 0);

    EXPECT_FALSE(silent->notify(&own));
}

TEST_F(VeloListenerTest, WithoutANameThePipeIsTheMisspeltDefault) {
    contract::PipeServer unknown(L"unkown");

    const VeloListener nameless(PropertyHolder{}, nullptr);

    EXPECT_FALSE(platform::waitForPipe(unknown.path().c_str()));  // the pipe has its one client
}
