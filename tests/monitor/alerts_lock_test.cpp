#include "platform/simulated/held_locks.h"
#include "tests/monitor/alerts_fixture.h"

namespace {

// Notes how many locks are held when the document ends, instead of closing anything.
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

// A closed fax alert ends the document as the last step of its closing.
TEST_F(AlertsLockTest, TheListStaysLockedUntilTheAlertIsClosed) {
    status(100000);

    headless::closeBox(headless::windows().front());

    EXPECT_EQ(listener->locksHeld, 1);
    EXPECT_EQ(platform::simulated::heldCriticalSections(), 0);
}

}  // namespace
