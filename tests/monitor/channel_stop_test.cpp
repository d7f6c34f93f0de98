// How the listener stops the status channel. The tests look at the calls that the broker gets.
#include "arbor/message.h"
#include "monitor/default_lms_listener.h"
#include "platform/simulated/world.h"
#include "tern/class_ids.h"
#include "tern/velo_record.h"
#include "tests/support/headless_dialogs/headless_dialogs.h"
#include "tests/support/test_components.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace {

constexpr std::int32_t kFaxPrinted = 100000;
constexpr std::int32_t kNoCartridge = 40600;
constexpr std::uint32_t kAnyFlags = 99;
constexpr char kNoAlertIsLeft[] = "TERNA - No more dlgs, killing threads...";

class StopRecorder : public tern::EventBroker {
public:
    using EventBroker::EventBroker;

    bool stop(const arbor::Guid* who, std::uint32_t flags) override {
        if (stoppedFor.empty()) {
            toldFirst = platform::simulated::world().diagnostics.hasTraced(kNoAlertIsLeft);
        }
        stoppedFor.push_back(*who);
        lastFlags = flags;
        return EventBroker::stop(who, flags);
    }

    std::vector<arbor::Guid> stoppedFor;
    std::uint32_t lastFlags = kAnyFlags;
    bool toldFirst = false;  // the trace had the reason when the channel was stopped first
};

// Counts the ends of documents, records whether alerts are still open, and closes nothing.
class EndRecorder : public DefaultLMSListener {
public:
    using DefaultLMSListener::DefaultLMSListener;

    void onEndDocument() override {
        ++ends;
        alertsLeft = _alerts.empty() ? 0 : 1;
    }

    int ends = 0;
    int alertsLeft = -1;
};

template <typename Listener>
class ChannelFixture : public testing::Test {
protected:
    ChannelFixture() {
        platform::simulated::world().reset();
        platform::simulated::world().diagnostics.keepTrace();
        headless::reset();
        auto made = std::make_unique<Listener>(&manager, tern::kVeloEventGeneratorId,
                                               tern::kVeloListenerId, nullptr, nullptr);
        listener = made.get();
        if (manager.addComponent(listener)) static_cast<void>(made.release());
    }
    ~ChannelFixture() override {
        headless::reset();
        platform::simulated::world().reset();
    }

    void status(std::int32_t code) {
        arbor::Message message(&tern::kVeloEventGeneratorId, 2, 0);
        message.getProperties()->setInt(L"status", code);
        listener->notify(&message);
    }

    void documentEnds() {
        arbor::Message message(&tern::kVeloEventGeneratorId, 0, 0);
        message.getProperties()->setInt(L"subcode", tern::kDocumentEnd);
        listener->notify(&message);
    }

    static void closeTheAlert() { headless::closeBox(headless::windows().front()); }

    test::TestManager<StopRecorder> manager;
    Listener* listener = nullptr;  // owned by the broker
};

class ChannelStopTest : public ChannelFixture<DefaultLMSListener> {
protected:
    // Each stop of the channel must stop the generator and the listener at its two ends.
    void expectStopped(int times) {
        std::vector<arbor::Guid> expected;
        for (int i = 0; i < times; ++i) {
            expected.push_back(tern::kVeloEventGeneratorId);
            expected.push_back(tern::kVeloListenerId);
        }
        EXPECT_TRUE(manager.broker.stoppedFor == expected) << manager.broker.stoppedFor.size();
        EXPECT_EQ(manager.broker.lastFlags, times == 0 ? kAnyFlags : 0U);
    }
};

TEST_F(ChannelStopTest, TheEndOfADocumentWithoutAlertsStopsBothEnds) {
    documentEnds();

    expectStopped(1);
}

TEST_F(ChannelStopTest, AnAlertThatStaysKeepsTheChannelUpUntilItIsClosed) {
    status(kNoCartridge);
    documentEnds();
    expectStopped(0);

    closeTheAlert();

    expectStopped(1);
}

// The threads trace while they end, so the reason must stand in the trace before.
TEST_F(ChannelStopTest, TheTraceSaysThatNoAlertIsLeftBeforeTheChannelIsStopped) {
    status(kNoCartridge);
    documentEnds();

    closeTheAlert();

    EXPECT_TRUE(manager.broker.toldFirst);
}

// It is stopped once because closing a fax alert ends the document, and a second time because no
// alert is left.
TEST_F(ChannelStopTest, ClosingTheLastFaxAlertStopsTheChannelTwice) {
    status(kFaxPrinted);

    closeTheAlert();

    expectStopped(2);
    EXPECT_TRUE(platform::simulated::world().diagnostics.hasTraced(kNoAlertIsLeft));
}

class DocumentEndTest : public ChannelFixture<EndRecorder> {};

TEST_F(DocumentEndTest, AClosedFaxAlertEndsTheDocumentThroughTheOperationThatMayBeReplaced) {
    status(kFaxPrinted);

    closeTheAlert();

    EXPECT_EQ(listener->ends, 1);
    EXPECT_EQ(listener->alertsLeft, 0);
    EXPECT_TRUE(manager.broker.stoppedFor.empty());
}

}  // namespace
