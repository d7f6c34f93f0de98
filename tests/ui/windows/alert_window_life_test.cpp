// How alert windows are opened and destroyed.
#include "tests/ui/windows/alert_window_fixture.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"

#include <functional>

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

}  // namespace
