// How alert windows are opened and destroyed.
#include "tests/ui/windows/alert_window_fixture.h"
#include "ui/alert_actions.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace {

TEST_F(AlertWindowTest, IsNotMadeFromATemplateThatIsMissing) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 0, 0);
    ASSERT_NE(createAlertDialog(description), nullptr);
    description.setInt(alert_key::kTemplate, 4711);

    DefaultStatusDialog dialog(description, false);

    EXPECT_FALSE(dialog.create());
    EXPECT_EQ(dialog.window(), nullptr);
}

TEST_F(AlertWindowTest, MayBeDestroyedWhileItsProcedureRuns) {
    const std::function<void()> endings[] = {
        [this] { ::SendMessageW(control(130), BM_CLICK, 0, 0); },
        [this] { ::SendMessageW(alert->window(), WM_CLOSE, 0, 0); },
        [this] { pressKey(130, VK_ESCAPE); },
        [this] { pressKey(130, VK_RETURN); },
        [this] { typeLetter(control(130), L'O'); },
        [this] { ::SendMessageW(alert->window(), WM_MENUCHAR, MAKEWPARAM('o', MF_SYSMENU), 0); },
        [this] { ::SendMessageW(alert->window(), WM_COMMAND, 1012, 0); }};
    for (const auto& end : endings) {
        onTold = nullptr;
        open(0);
        const HWND window = alert->window();
        endWithTheNextAction();
        end();
        alert_desktop::pump();
        EXPECT_EQ(alert, nullptr);
        EXPECT_FALSE(::IsWindow(window));
        onTold = nullptr;
    }
}

TEST_F(AlertWindowTest, IsHiddenButThereWhenItsUserClosesIt) {
    open(0);

    ::SendMessageW(alert->window(), WM_CLOSE, 0, 0);

    EXPECT_EQ(codes, (Codes{5}));
    EXPECT_TRUE(::IsWindow(alert->window()));
    EXPECT_FALSE(::IsWindowVisible(alert->window()));
    EXPECT_EQ(::GetWindowLongPtrW(alert->window(), GWLP_USERDATA), 0);
}

TEST_F(AlertWindowTest, IsGoneWithItsObjectAlsoAfterItWasClosed) {
    open(0);
    const HWND window = alert->window();
    ::SendMessageW(window, WM_CLOSE, 0, 0);

    alert.reset();

    EXPECT_FALSE(::IsWindow(window));
}

TEST_F(AlertWindowTest, IsGoneWhenItIsDismissed) {
    open(0);
    const HWND window = alert->window();

    dismissAlertWindow(window);

    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(alert->window(), nullptr);
    EXPECT_TRUE(codes.empty());
    dismissAlertWindow(window);
    destroyAlertWindow(nullptr);
}

TEST_F(AlertWindowTest, TellsItsEndWithoutParameters) {
    open(0);
    int seen = 0;
    broker.addComponent(new test::ListenerComponent([&seen](arbor::IMessage& message) {
        const arbor::IPropertyHolder& properties = *message.getProperties();
        EXPECT_EQ(properties.getInt(alert_action_key::kWord, -1), 0);
        EXPECT_EQ(properties.getInt(alert_action_key::kLong, -1), 0);
        EXPECT_EQ(properties.getPointer(alert_action_key::kWindow, &seen), nullptr);
        ++seen;
        return true;
    }));

    ::SendMessageW(alert->window(), WM_CLOSE, 0, 0);

    EXPECT_EQ(seen, 1);
}

struct SentMessage {
    UINT message;
    WPARAM wParam;
    bool reachesObject;
};
HWND watched = nullptr;
std::vector<SentMessage> sent;

LRESULT CALLBACK onSentMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto& asked = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && asked.hwnd == watched) {
        const bool reachesObject = ::GetWindowLongPtrW(watched, GWLP_USERDATA) != 0;
        sent.push_back({asked.message, asked.wParam, reachesObject});
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

// Writes down what is sent to the alert's window.
class WatchedAlertTest : public AlertWindowTest {
protected:
    WatchedAlertTest() {
        open(27);
        watched = alert->window();
        sent.clear();
        _hook = ::SetWindowsHookExW(WH_CALLWNDPROC, onSentMessage, nullptr, ::GetCurrentThreadId());
    }
    ~WatchedAlertTest() override { ::UnhookWindowsHookEx(_hook); }
    static void expectThatTheObjectHeardNothing() {
        EXPECT_FALSE(sent.empty());
        for (const SentMessage& message : sent)
            EXPECT_FALSE(message.reachesObject) << message.message;
    }

private:
    HHOOK _hook = nullptr;
};

// The owner of the object may destroy it before the window is gone.
TEST_F(WatchedAlertTest, TellsItsObjectNothingWhileItIsDismissed) {
    dismissAlertWindow(watched);

    expectThatTheObjectHeardNothing();
}

TEST_F(WatchedAlertTest, TellsItsObjectNothingWhileItIsDestroyed) {
    destroyAlertWindow(watched);

    expectThatTheObjectHeardNothing();
}

// A control may show a copy of its own, which it does not delete.
TEST_F(WatchedAlertTest, TakesItsPicturesOutOfTheirControls) {
    constexpr int kTonerLow = 4, kSuppliesPicture = 136;
    open(kTonerLow);
    watched = control(kSuppliesPicture);
    sent.clear();

    alert.reset();

    EXPECT_TRUE(std::ranges::any_of(
        sent, [](const SentMessage& message) { return message.message == STM_SETIMAGE; }));
}

TEST_F(WatchedAlertTest, IsHiddenWhileItBecomesCompact) {
    compactAlertWindow(watched, false);

    std::vector<WPARAM> shown;
    for (const SentMessage& message : sent) {
        if (message.message == WM_SHOWWINDOW) shown.push_back(message.wParam);
    }
    EXPECT_EQ(shown, (std::vector<WPARAM>{FALSE, TRUE}));
}

}  // namespace
