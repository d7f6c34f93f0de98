#include "platform/simulated/held_locks.h"
#include "tests/monitor/alerts_fixture.h"

namespace {

// Records how many locks are held when the document ends, and closes nothing.
class LockRecorder : public DefaultLMSListener {
public:
    using DefaultLMSListener::DefaultLMSListener;

    void onEndDocument() override { locksHeld = platform::simulated::heldCriticalSections(); }

    int locksHeld = -1;
};

class AlertsLockTest : public ListenerFixture<LockRecorder> {
protected:
    AlertsLockTest() { headless::reset(); }
    ~AlertsLockTest() override {
        manager.reset();
        headless::reset();
    }
};

// The last step of closing a fax alert is to end the document. The list must still be locked then.
TEST_F(AlertsLockTest, TheListStaysLockedUntilTheAlertIsClosed) {
    status(100000);

    headless::closeBox(headless::windows().front());

    EXPECT_EQ(listener->locksHeld, 1);
    EXPECT_EQ(platform::simulated::heldCriticalSections(), 0);
}

}  // namespace
