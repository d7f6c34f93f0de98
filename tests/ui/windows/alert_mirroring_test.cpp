// Alerts of a desktop that reads from right to left.
#include "tests/ui/windows/alert_window_fixture.h"

#include <map>

namespace {

constexpr int kManualDuplex = 3, kTonerLow = 4;

// Places on the screen, relative to the window's client area as a person sees it.
class AlertMirroringTest : public AlertWindowTest {
protected:
    static BOOL CALLBACK add(HWND child, LPARAM places) {
        RECT place{};
        RECT client{};
        ::GetWindowRect(child, &place);
        const HWND dialog = ::GetParent(child);
        ::GetClientRect(dialog, &client);
        ::MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
        const LONG left = std::min(client.left, client.right);
        ::OffsetRect(&place, -left, -client.top);
        (*reinterpret_cast<std::map<int, RECT>*>(places))[::GetDlgCtrlID(child)] = place;
        return TRUE;
    }
    std::map<int, RECT> placesOf(int type) {
        open(type);
        alert_desktop::pumpFor(50);  // the buttons have got their sizes
        std::map<int, RECT> places;
        ::EnumChildWindows(alert->window(), add, reinterpret_cast<LPARAM>(&places));
        RECT client{};
        ::GetClientRect(alert->window(), &client);
        width = client.right;
        alert.reset();
        return places;
    }
    LONG width = 0;
};

TEST_F(AlertMirroringTest, PutsEveryControlOnTheOtherSide) {
    for (const int type : {kManualDuplex, kTonerLow}) {
        const std::map<int, RECT> places = placesOf(type);
        const alert_desktop::MirroredDesktop desktop;
        const std::map<int, RECT> mirrored = placesOf(type);

        ASSERT_EQ(mirrored.size(), places.size());
        for (const auto& [id, place] : places) {
            const RECT& other = mirrored.at(id);
            EXPECT_EQ(other.left, width - place.right) << id;
            EXPECT_EQ(other.right, width - place.left) << id;
            EXPECT_EQ(other.top, place.top) << id;
            EXPECT_EQ(other.bottom, place.bottom) << id;
        }
    }
}

// Texts and buttons are mirrored themselves; a picture is the same everywhere.
TEST_F(AlertMirroringTest, MirrorsEveryControlButPictures) {
    const alert_desktop::MirroredDesktop desktop;
    const auto isMirrored = [&](int id) {
        return (::GetWindowLongPtrW(control(id), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    };
    open(kTonerLow);
    for (const int id : {130, 131, 134, 1018, 1004, 1008, 1009, 1060})
        EXPECT_TRUE(isMirrored(id)) << id;
    for (const int id : {133, 136, 137, 236, 1002})
        EXPECT_FALSE(isMirrored(id)) << id;
    alert.reset();

    open(kManualDuplex);

    for (const int id : {130, 1014, 1015, 1016, 1017})
        EXPECT_TRUE(isMirrored(id)) << id;
    for (const int id : {230, 231, 232, 1021, 1022, 1023})
        EXPECT_FALSE(isMirrored(id)) << id;
}

TEST_F(AlertMirroringTest, OpensAnAlertAtItsPlace) {
    const alert_desktop::MirroredDesktop desktop;

    open(kTonerLow);

    RECT place{};
    ::GetWindowRect(alert->window(), &place);
    EXPECT_EQ(place.left, 100);
    EXPECT_EQ(place.top, 100);
}

}  // namespace
