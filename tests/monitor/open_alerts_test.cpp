#include "monitor/open_alerts.h"

#include "tests/monitor/alerts_fixture.h"
#include "ui/alert_window.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

class OpenAlertsTest : public AlertsFixture {
protected:
    void open(int dialogType, bool autoClose = true) {
        arbor::PropertyHolder description;
        description.setInt(L"dialog type", dialogType);
        alerts.addAlert(description, static_cast<AlertType>(dialogType), autoClose);
    }

    static DefaultStatusDialog* dialogOf(int dialogType) {
        return static_cast<DefaultStatusDialog*>(headless::find(windowOf(dialogType))->dialog);
    }

    // The trace line of one comparison: the dialog that is searched and the dialog in the list.
    static std::string comparison(const char* operation, const void* wanted, const void* found) {
        char line[80];
        std::snprintf(line, sizeof line, "TERNA %s %#x ?= %#x", operation, low(wanted), low(found));
        return line;
    }

    static std::vector<std::string> comparisonsTraced() {
        std::vector<std::string> lines = world().diagnostics.traceLines();
        const auto isOther = [](const std::string& line) {
            return line.find(" 0x") == std::string::npos || line.find(" ?= ") == std::string::npos;
        };
        lines.erase(std::remove_if(lines.begin(), lines.end(), isOther), lines.end());
        return lines;
    }

    OpenAlerts alerts;

private:
    static unsigned low(const void* address) {
        return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(address));
    }
};

TEST_F(OpenAlertsTest, OneAlertOfEachTypeIsOpen) {
    open(0);
    open(0);

    EXPECT_EQ(openTypes(), std::vector<int>{0});
}

TEST_F(OpenAlertsTest, AlertsCascadeByTwentyPixels) {
    open(0);
    open(10);
    open(12);

    const std::vector<WindowHandle> windows = headless::windows();
    ASSERT_EQ(windows.size(), 3U);
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(headless::find(windows[static_cast<std::size_t>(index)])->x, 100 + 20 * index);
        EXPECT_EQ(headless::find(windows[static_cast<std::size_t>(index)])->y, 100 + 20 * index);
    }
}

TEST_F(OpenAlertsTest, TheCascadeNeverGoesBack) {
    open(0);
    alerts.removeAlertDialog(dialogOf(0));

    open(0);

    EXPECT_EQ(headless::find(windowOf(0))->x, 120);
}

TEST_F(OpenAlertsTest, ADroppedSecondAlertTakesNoPlaceInTheCascade) {
    open(0);
    open(0);

    open(10);

    EXPECT_EQ(headless::find(windowOf(10))->x, 120);
}

TEST_F(OpenAlertsTest, LookupsTellTheFirstMatch) {
    open(0);
    open(10);

    EXPECT_EQ(alerts.findAlertDialogType(AlertType::LaserBeam), 1U);
    EXPECT_EQ(alerts.findAlertDialog(dialogOf(10)), dialogOf(10));
    EXPECT_EQ(alerts.findAlertTypeFromDlg(dialogOf(10)), AlertType::LaserBeam);
}

TEST_F(OpenAlertsTest, LookupsOfStrangersFindNothing) {
    open(0);
    const StatusDialog* stranger = reinterpret_cast<const StatusDialog*>(this);

    EXPECT_EQ(alerts.findAlertDialogType(AlertType::NonQvCartridge), OpenAlerts::kNotFound);
    EXPECT_EQ(alerts.findAlertDialog(stranger), nullptr);
    EXPECT_EQ(alerts.findAlertTypeFromDlg(stranger), AlertType::None);
    alerts.removeAlertDialog(stranger);
    EXPECT_EQ(openTypes(), std::vector<int>{0});
}

TEST_F(OpenAlertsTest, LookupsAreTraced) {
    open(0);
    alerts.findAlertDialogType(AlertType::LaserBeam);

    EXPECT_TRUE(wasTraced("TERNA findAlertDialogType 10"));
    EXPECT_TRUE(wasTraced("TERNA findAlertDialogType 10 ?= 0"));
}

// Each of the three operations traces every alert that it compares, up to the first that matches.
TEST_F(OpenAlertsTest, SearchesForADialogAreTracedByItsAddress) {
    open(0);
    open(10);
    open(12);
    const StatusDialog* first = dialogOf(0);
    const StatusDialog* second = dialogOf(10);

    alerts.findAlertDialog(second);
    alerts.findAlertTypeFromDlg(second);
    alerts.removeAlertDialog(second);

    const std::vector<std::string> expected = {
        comparison("findAlertDialog", second, first),
        comparison("findAlertDialog", second, second),
        comparison("findAlertTypeFromDlg", second, first),
        comparison("findAlertTypeFromDlg", second, second),
        comparison("removeAlertDialog", second, first),
        comparison("removeAlertDialog", second, second),
    };
    EXPECT_EQ(comparisonsTraced(), expected);
}

TEST_F(OpenAlertsTest, ANewAlertIsTracedByItsAddress) {
    open(0);

    const std::vector<std::string> lines = world().diagnostics.traceLines();
    const auto isNewAlert = [](const std::string& line) {
        return line.rfind("TERNA new alert in _alerts (0x", 0) == 0;
    };
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(), isNewAlert), 1);
}

// Putting an alert together asks the spooler and the device, which may take seconds or go wrong. By
// then the trace names the alert.
TEST_F(OpenAlertsTest, ANewAlertIsTracedBeforeItsPrinterIsAsked) {
    open(0);

    const std::vector<std::string> lines = world().diagnostics.traceLines();
    const auto firstWith = [&lines](const char* words) {
        return std::find_if(lines.begin(), lines.end(), [words](const std::string& line) {
            return line.find(words) != std::string::npos;
        });
    };
    const auto asked = firstWith("this printer can not be openned");
    ASSERT_NE(asked, lines.end());
    EXPECT_LT(firstWith("TERNA new alert in _alerts"), asked);
}

TEST_F(OpenAlertsTest, RemovingDestroysTheAlertAndItsWindow) {
    open(0);
    open(10);

    alerts.removeAlertDialog(dialogOf(0));

    EXPECT_EQ(openTypes(), std::vector<int>{10});
    EXPECT_EQ(alerts.findAlertDialogType(AlertType::LaserBeam), 0U);
    EXPECT_TRUE(wasTraced("TERNA remove dlg  = 0"));
}

TEST_F(OpenAlertsTest, TheWalkOfTheDocumentsEndKeepsTheOthersInOrder) {
    open(0, true);
    open(4, false);
    open(10, true);
    open(12, true);
    open(30, false);
    const WindowHandle lastToClose = windowOf(12);

    const std::uint32_t left = alerts.removeAllAutocloseDialogs(true);

    EXPECT_EQ(left, 2U);
    EXPECT_EQ(openTypes(), (std::vector<int>{4, 30}));
    EXPECT_EQ(headless::dismissedWindows(), 3);
    EXPECT_EQ(headless::lastDismissed(), lastToClose);
    EXPECT_TRUE(wasTraced("TERNA removeAllAutocloseDialogs"));
    EXPECT_TRUE(wasTraced("TERNA remove Dialog 0"));
    EXPECT_TRUE(wasTraced("TERNA remove Dialog 1"));
    EXPECT_TRUE(wasTraced("TERNA Dialogs left 2"));
}

TEST_F(OpenAlertsTest, TheWalkCountsTheSameWithoutClosingWindows) {
    open(0, true);
    open(4, false);

    const std::uint32_t left = alerts.removeAllAutocloseDialogs(false);

    EXPECT_EQ(left, 1U);
    EXPECT_EQ(headless::dismissedWindows(), 0);
    EXPECT_EQ(alerts.findAlertDialogType(AlertType::PaperOut), OpenAlerts::kNotFound);
    EXPECT_EQ(alerts.findAlertDialogType(AlertType::TonerLow), 0U);
}

TEST_F(OpenAlertsTest, AnAlertThatLostItsWindowIsNotDismissed) {
    open(0, true);
    destroyAlertWindow(windowOf(0));

    EXPECT_EQ(alerts.removeAllAutocloseDialogs(true), 0U);

    EXPECT_EQ(headless::dismissedWindows(), 0);
    EXPECT_TRUE(alerts.empty());
}

TEST_F(OpenAlertsTest, AnAlertWithoutAWindowIsNotKept) {
    headless::setCreationFails(true);
    open(0);
    EXPECT_TRUE(alerts.empty());

    headless::setCreationFails(false);
    open(0);

    EXPECT_FALSE(alerts.empty());
}

TEST_F(OpenAlertsTest, NoAlertIsLeftOpenWhenTheListIsDestroyed) {
    {
        OpenAlerts others;
        arbor::PropertyHolder description;
        description.setInt(L"dialog type", 10);
        others.addAlert(description, AlertType::LaserBeam, true);
        ASSERT_EQ(headless::windows().size(), 1U);
    }

    EXPECT_TRUE(headless::windows().empty());
}

}  // namespace
