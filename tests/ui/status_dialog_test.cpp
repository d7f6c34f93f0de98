#include "ui/status_dialog.h"

#include "tests/ui/alert_fixture.h"
#include "ui/alert_window.h"

#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <vector>

// How the texts of an alert are made from its description. This includes keys that no alert of the
// program sets at present.

namespace {

// Ids from here on are used by no alert.
constexpr unsigned kFirstFree = 2000;

class StatusDialogTest : public AlertFixture {
protected:
    // Adds a text to the library and returns its id.
    int newText(const std::wstring& text) {
        replaceText(_next, text);
        return static_cast<int>(_next++);
    }

private:
    unsigned _next = kFirstFree;
};

TEST_F(StatusDialogTest, OpensWhereItsOwnerSaysOrNearTheCorner) {
    open(0, 41100);
    EXPECT_EQ(frame().x, 100);
    EXPECT_EQ(frame().y, 100);

    describe(0, 41100);
    auto second = std::make_unique<DefaultStatusDialog>(description, false);
    second->setPosition(120, 140);
    ASSERT_TRUE(second->create());

    EXPECT_EQ(headless::find(second->window())->x, 120);
    EXPECT_EQ(headless::find(second->window())->y, 140);
}

TEST_F(StatusDialogTest, OpensAtOnceWhenAsked) {
    describe(0, 41100);
    description.setInt(L"dialogID", 137);

    const DefaultStatusDialog dialog(description, true);

    EXPECT_NE(dialog.window(), nullptr);
}

TEST_F(StatusDialogTest, SaysThatThereIsNoWindowAndLeavesTheRestToItsOwner) {
    describe(0, 41100);
    headless::setCreationFails(true);
    DefaultStatusDialog dialog(description, false);

    EXPECT_FALSE(dialog.create());
    EXPECT_EQ(dialog.window(), nullptr);
}

TEST_F(StatusDialogTest, KeepsNoWindowThatCouldNotBeFilled) {
    describe(0, 41100);
    description.setInt(L"dialogID", 137);
    description.setInt(L"idsSnoozeSelect", 114);
    DefaultStatusDialog dialog(description, false);
    onTold = [](const Told&) { throw std::bad_alloc(); };

    EXPECT_FALSE(dialog.create());

    EXPECT_EQ(dialog.window(), nullptr);
    EXPECT_TRUE(headless::windows().empty());
}

TEST_F(StatusDialogTest, TakesItsWindowWithIt) {
    open(0, 41100);
    ASSERT_EQ(headless::windows().size(), 1U);

    alert.reset();

    EXPECT_TRUE(headless::windows().empty());
}

TEST_F(StatusDialogTest, KnowsWhenItsWindowIsGone) {
    open(0, 41100);

    destroyAlertWindow(alert->window());

    EXPECT_EQ(alert->window(), nullptr);
}

TEST_F(StatusDialogTest, FormatsTheMessageWithTheTextThatThePrintersNameNumbers) {
    describe(13, 1);
    description.setString(L"idsPrinter", "218 at the window");
    description.setInt(L"ids1", newText(L"[%s]"));

    openDescribed();

    EXPECT_EQ(control(132).text, L"[" + text(218) + L"]");
}

TEST_F(StatusDialogTest, BuildsAMessageOfMessageMediaAndTray) {
    describe(13, 1);
    description.setInt(L"ids2", newText(L"%s/%s/%s"));
    description.setInt(L"mediaCode", 302);
    description.setInt(L"trayCode", newText(L"tray"));

    openDescribed();

    EXPECT_EQ(control(132).text, L"/" + text(302) + L"/tray");
}

// A key with a text number replaces the message even if the library does not have that text.
TEST_F(StatusDialogTest, LetsAMissingTextForThePartNumberReplaceTheMessageToo) {
    constexpr int kMissing = 1999;
    describe(13, 1);
    description.setString(L"StringStr", "unknown");
    description.setInt(L"ids2", newText(L"before"));
    description.setInt(L"idsPn", kMissing);

    openDescribed();

    EXPECT_EQ(control(132).text, L"");
    EXPECT_FALSE(control(132).visible);
}

TEST_F(StatusDialogTest, LeavesTheTextsOfItsTemplateWhereItHasNone) {
    headless::setTemplateText(L"of the template");
    describe(13, 1);

    openDescribed();

    EXPECT_EQ(control(132).text, L"of the template");
    EXPECT_EQ(control(1004).text, L"of the template");
    EXPECT_EQ(control(1012).text, L"of the template");
}

TEST_F(StatusDialogTest, LeavesMediaAndTrayOutWhereTheirKeysAreAbsent) {
    describe(13, 1);
    description.setInt(L"ids2", newText(L"[%s|%s|%s]"));

    openDescribed();

    EXPECT_EQ(control(132).text, L"[||]");
}

// A medium or tray that the listener does not know is written as -1, which numbers no text.
TEST_F(StatusDialogTest, LeavesMediaAndTrayOutWhereTheyAreNotKnown) {
    describe(13, 1);
    description.setInt(L"ids2", newText(L"[%s|%s|%s]"));
    replaceText(0xFFFFFFFF, L"of no medium");
    description.setInt(L"mediaCode", -1);
    description.setInt(L"trayCode", -1);

    openDescribed();

    EXPECT_EQ(control(132).text, L"[||]");
}

// An absent key is read as a number that means "no text", so nothing may be shown even if the
// library has a text with this number.
TEST_F(StatusDialogTest, ShowsNothingForKeysThatAreAbsent) {
    for (const unsigned id : {0U, 1U})
        replaceText(id, L"of no key");
    arbor::PropertyHolder bare;
    bare.setPointer(L"hSinstance", strings);
    bare.setPointer(L"eventBroker", &broker);
    bare.setInt(L"dialogID", headless::kLinksTemplate);

    const DefaultStatusDialog dialog(bare, true);

    for (const auto& [id, control] : headless::find(dialog.window())->controls) {
        const bool isButton = id == 130 || id == 131 || id == 134 || id == 1018;
        EXPECT_EQ(control.text, isButton ? control.text : L"") << id;
        EXPECT_EQ(control.picture, 0) << id;
    }
    EXPECT_EQ(headless::find(dialog.window())->title, L"");
    EXPECT_EQ(dialog.dialogType(), AlertType::PaperOut);
    EXPECT_TRUE(told.empty());
}

TEST_F(StatusDialogTest, LetsALiteralMessageReplaceTheOnesBefore) {
    describe(13, 1);
    description.setInt(L"ids2", newText(L"two"));
    description.setWString(L"StringStr", L"\u7eb8\u5f20");

    openDescribed();

    EXPECT_EQ(control(132).text, L"\u7eb8\u5f20");
}

TEST_F(StatusDialogTest, IgnoresALiteralMessageThatSaysUnknown) {
    describe(13, 1);
    description.setInt(L"ids2", newText(L"two"));
    description.setString(L"StringStr", "unknown");

    openDescribed();

    EXPECT_EQ(control(132).text, L"two");
}

TEST_F(StatusDialogTest, LetsThePartNumberReplaceEveryMessageButTheFirst) {
    describe(13, 1);
    description.setString(L"StringStr", "literal");
    description.setInt(L"idsPn", newText(L"Part %S"));
    description.setString(L"qvPartNo", "QV-7400A");

    openDescribed();

    EXPECT_EQ(control(132).text, L"Part QV-7400A");
}

TEST_F(StatusDialogTest, CallsAPartNumberThatIsMissingUnknown) {
    describe(13, 1);
    description.setInt(L"idsPn", newText(L"Part %S"));

    openDescribed();

    EXPECT_EQ(control(132).text, L"Part unknown");
}

TEST_F(StatusDialogTest, PutsTheFirstMessageBackOverAllOthers) {
    describe(13, 1);
    description.setInt(L"ids1", newText(L"first"));
    description.setString(L"StringStr", "literal");
    description.setInt(L"idsPn", newText(L"Part %S"));

    openDescribed();

    EXPECT_EQ(control(132).text, L"first");
}

TEST_F(StatusDialogTest, LetsALiteralDetailReplaceTheDetail) {
    describe(10, 50012);
    description.setString(L"subtitle1", "literal");
    openDescribed();
    EXPECT_EQ(control(1012).text, L"literal");
    alert.reset();

    description.setString(L"subtitle1", "not exist");
    openDescribed();

    EXPECT_EQ(control(1012).text, text(125));
}

TEST_F(StatusDialogTest, ReadsNarrowTextsWhereAProducerStoredThem) {
    describe(4, 10209);
    description.setString(L"idsPrinter", "Hall");

    openDescribed();

    EXPECT_EQ(frame().title, L"Hall \u2013 Printer alert");
    EXPECT_EQ(control(236).name, L"Hall");
}

TEST_F(StatusDialogTest, AnnouncesEveryExtraTextWithItsWindow) {
    describe(10, 50012);
    description.setInt(L"idsFaxReceived", newText(L"a"));
    description.setInt(L"idsFaxReceivedTB", newText(L"b"));
    description.setInt(L"idsSnoozeSelect", 114);
    description.setInt(L"idsSnoozeRemindAfter", 115);

    openDescribed();

    EXPECT_EQ(codes(), (std::vector<std::uint32_t>{90001, 90002, 90003, 90004, 90005}));
    for (const Told& one : told) {
        EXPECT_EQ(one.window, static_cast<void*>(window()));
        EXPECT_EQ(one.dialog, static_cast<void*>(alert.get()));
        EXPECT_EQ(one.wParam, 0);
        EXPECT_EQ(one.lParam, 0);
    }
}

TEST_F(StatusDialogTest, MakesTheHeadlineBold) {
    open(10, 50012);

    EXPECT_TRUE(control(1004).isHeadline);
}

TEST_F(StatusDialogTest, PutsACaptionOfItsOwnOnTheOkButton) {
    describe(10, 50012);
    description.setInt(L"buttonMessage", 158);

    openDescribed();

    EXPECT_EQ(control(130).text, text(158));
}

TEST_F(StatusDialogTest, MakesLinksOfTheThreeLinkTextsWhereTheTemplateHasThem) {
    describe(13, 1);
    description.setInt(L"idsShop", 217);
    description.setInt(L"idsReturns", 218);
    description.setInt(L"idsFraud", newText(L"Is it genuine?"));
    description.setInt(L"dialogID", headless::kLinksTemplate);
    alert = std::make_unique<DefaultStatusDialog>(description, true);

    for (const int link : {1005, 1006, 1007}) {
        EXPECT_TRUE(control(link).isLink) << link;
        EXPECT_TRUE(control(link).isUnderlined) << link;
    }
    EXPECT_EQ(control(1005).text, text(217));
    EXPECT_EQ(control(1007).text, L"Is it genuine?");
}

// A dialog with only the rules of the base class.
class PlainDialog final : public StatusDialog {
public:
    explicit PlainDialog(const arbor::IPropertyHolder& description, bool createNow = false)
        : StatusDialog(description, createNow) {}
    ~PlainDialog() = default;

    [[nodiscard]] const auto& snoozeChoices() const { return _snoozeChoices; }
};

TEST_F(StatusDialogTest, OpensAPlainAlertAtOnceWhenAsked) {
    describe(0, 41100);
    description.setInt(L"dialogID", headless::kLinksTemplate);

    const PlainDialog opened(description, true);
    const PlainDialog waiting(description, false);

    EXPECT_NE(opened.window(), nullptr);
    EXPECT_EQ(waiting.window(), nullptr);
}

// A listener that hears of the extras may change the window, but not what its buttons say.
TEST_F(StatusDialogTest, PutsTheCaptionOnThePlainOkButtonAfterItsExtrasWereTold) {
    describe(0, 41100);
    description.setInt(L"dialogID", headless::kLinksTemplate);
    description.setInt(L"buttonMessage", 158);
    description.setInt(L"idsFaxReceived", newText(L"a"));
    onTold = [](const Told& one) {
        headless::control(static_cast<WindowHandle>(one.window), 130).text = L"of a listener";
    };

    const PlainDialog plain(description, true);

    EXPECT_EQ(told.size(), 1U);
    EXPECT_EQ(headless::control(plain.window(), 130).text, text(158));
}

TEST_F(StatusDialogTest, TellsThePlainActionsOfAPlainAlert) {
    describe(0, 41100);
    description.setInt(L"dialogID", headless::kLinksTemplate);
    PlainDialog plain(description);
    ASSERT_TRUE(plain.create());
    told.clear();

    for (const unsigned control : {1006U, 1007U, 1005U, 2U, 130U, 131U, 135U}) {
        headless::sendCommand(plain.window(), control, 7);
    }

    EXPECT_EQ(codes(), (std::vector<std::uint32_t>{7, 8, 6, 1, 2, 4, 135}));
    EXPECT_EQ(told[0].window, nullptr);
    EXPECT_EQ(told[6].window, static_cast<void*>(plain.window()));
    EXPECT_EQ(told[6].wParam, 135);
    EXPECT_EQ(told[6].lParam, 7);
}

TEST_F(StatusDialogTest, KeepsTheEightReminderTimesOfItsDescriptionInOrder) {
    constexpr const wchar_t* kKeys[] = {L"ids1Hour", L"ids4Hours", L"ids1Day",   L"ids2Days",
                                        L"ids3Days", L"ids1Week",  L"ids2Weeks", L"idsSnoozeNever"};
    describe(0, 41100);
    std::vector<std::wstring> expected;
    for (const wchar_t* key : kKeys) {
        expected.push_back(std::wstring(L"reminder of ") + key);
        description.setInt(key, newText(expected.back()));
    }

    const PlainDialog plain(description);

    EXPECT_EQ(std::vector(plain.snoozeChoices().begin(), plain.snoozeChoices().end()), expected);
}

TEST_F(StatusDialogTest, DropsActionsWithoutABroker) {
    describe(0, 41100);
    description.removeProperty(L"eventBroker");

    openDescribed();
    headless::press(window(), 130);
    headless::closeBox(window());

    EXPECT_TRUE(told.empty());
}

}  // namespace
