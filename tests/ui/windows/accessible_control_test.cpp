#include "tests/support/test_thread.h"
#include "tests/ui/windows/accessible_reading.h"
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/language_of_the_run.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/localized_text.h"
#include "ui/text_format.h"
#include "ui/validation_dialog.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

// What screen readers are told, in the language of the environment. The program runs once for each
// language that it is listed for.

namespace {

using accessible::Object;

constexpr int kTonerLow = 4, kNoCartridge = 5, kManualDuplex = 3, kFaxWithLink = 27,
              kNewCartridge = 25;
constexpr int kDetail = 1012, kHelp = 131, kMessage = 132, kChoices = 1008;
constexpr int kPictures[] = {133, 136, 137, 230, 231, 232, 236, 1002, 1021, 1022, 1023};
constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051, kPrivacy = 1049;
constexpr unsigned kStep = 373, kStepPicture = 374, kOpen = 375;

template <typename Ids>
bool isOneOf(int id, const Ids& ids) {
    return std::find(std::begin(ids), std::end(ids), id) != std::end(ids);
}

// The check of a new cartridge is offered on systems whose own language is Chinese.
std::vector<int> linksOf(int type) {
    constexpr LANGID kSimplifiedChinese = 2052;
    if (type == kFaxWithLink) return {kDetail};
    if (type == kNewCartridge && ::GetSystemDefaultLangID() == kSimplifiedChinese)
        return {kMessage};
    return {};
}

LONG roleOf(HWND control, const std::vector<int>& links) {
    wchar_t text[32] = {};
    ::GetClassNameW(control, text, 32);
    const std::wstring kind(text);
    const int id = ::GetDlgCtrlID(control);
    if (kind == L"Button") return ROLE_SYSTEM_PUSHBUTTON;
    if (kind == L"ComboBox") return ROLE_SYSTEM_COMBOBOX;
    if (isOneOf(id, links)) return ROLE_SYSTEM_LINK;
    return isOneOf(id, kPictures) ? ROLE_SYSTEM_GRAPHIC : ROLE_SYSTEM_STATICTEXT;
}

// Everything in sight has a name and its role; the rest says that nobody sees it.
void expectDescribed(HWND dialog, const std::vector<int>& links) {
    int seen = 0;
    for (HWND control = ::GetWindow(dialog, GW_CHILD); control != nullptr;
         control = ::GetWindow(control, GW_HWNDNEXT)) {
        const Object object(control);
        const int id = ::GetDlgCtrlID(control);
        ASSERT_NE(object.get(), nullptr) << id;
        const bool isHidden = (object.state() & STATE_SYSTEM_INVISIBLE) != 0;
        EXPECT_EQ(isHidden, ::IsWindowVisible(control) == FALSE) << id;
        if (isHidden) continue;
        ++seen;
        EXPECT_NE(object.name(), L"") << id;
        EXPECT_NE(object.name(), L" ") << id;
        EXPECT_EQ(object.role(), roleOf(control, links)) << id;
    }
    EXPECT_GT(seen, 0);
}

class AccessibleControlTest : public AlertWindowTest {
protected:
    AccessibleControlTest() {
        ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        if (isRightToLeftUI()) _mirrored.emplace();
    }
    ~AccessibleControlTest() override { ::CoUninitialize(); }

private:
    std::optional<alert_desktop::MirroredDesktop> _mirrored;
};

TEST_F(AccessibleControlTest, IsTestedInTheLanguageThatTheRunIsFor) {
    EXPECT_EQ(chosenLanguage(alert_desktop::strings()), languageOfTheRun());
}

TEST_F(AccessibleControlTest, TellsNameAndRoleOfEverythingInSightInEveryAlert) {
    for (int type = 0; type < alert_desktop::kTypes; ++type) {
        SCOPED_TRACE(type);
        alert = alert_desktop::openAlert(type, 0);
        ASSERT_NE(alert, nullptr);
        alert_desktop::pump();

        expectDescribed(alert->window(), linksOf(type));
        alert.reset();
    }
}

TEST_F(AccessibleControlTest, TellsNameAndRoleOfEverythingInTheCartridgeCheckAndItsDetails) {
    showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
    const HWND check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
    ASSERT_NE(check, nullptr);
    alert_desktop::pump();

    expectDescribed(check, {kLearnMore});
    const alert_desktop::ModalPage details(kDetailsTitle, [](HWND page) {
        expectDescribed(page, {kPrivacy});
        EXPECT_EQ(Object(::GetDlgItem(page, kPrivacy)).action(), alert_desktop::text(kOpen));
    });
    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(details.wasShown());
    ::SendMessageW(check, WM_COMMAND, IDCANCEL, 0);
}

TEST_F(AccessibleControlTest, NamesTheStepsOfTwoSidedPrintingAndTheirPictures) {
    open(kManualDuplex);

    for (int step = 0; step < 3; ++step) {
        const std::wstring number = std::to_wstring(step + 1);
        EXPECT_EQ(Object(control(1021 + step)).name(),
                  formatText(alert_desktop::text(kStep), {number}, kTextUnits));
        EXPECT_EQ(Object(control(230 + step)).name(),
                  formatText(alert_desktop::text(kStepPicture), {number}, kTextUnits));
    }
}

TEST_F(AccessibleControlTest, NamesTheListByTheLabelBeforeIt) {
    open(kTonerLow);

    EXPECT_EQ(Object(control(kChoices)).name(), alert_desktop::text(115));
}

TEST_F(AccessibleControlTest, LeavesTheMarkOutOfTheNameOfAButton) {
    open(0);

    for (const int button : {130, 131, 134, 1018})
        EXPECT_EQ(Object(control(button)).name().find(L'&'), std::wstring::npos) << button;
}

TEST_F(AccessibleControlTest, KeepsTheAmpersandOfAPrintersName) {
    alert = alert_desktop::openAlert(0, 0, nullptr, L"Smith & Sons");
    ASSERT_NE(alert, nullptr);

    EXPECT_EQ(Object(control(236)).name(), L"Smith & Sons");
}

TEST_F(AccessibleControlTest, ALetterOfAPrintersNameIsNoShortcut) {
    alert = alert_desktop::openAlert(0, 0, nullptr, L"R&D");
    ASSERT_NE(alert, nullptr);
    ::SetWindowTextW(control(kMessage), L"R&D");
    ::SetWindowTextW(control(133), L"R&D");

    for (const int text : {236, kMessage, 133})
        EXPECT_EQ(Object(control(text)).shortcut(), L"") << text;
    EXPECT_NE(Object(control(kHelp)).shortcut(), L"");
}

TEST_F(AccessibleControlTest, NamesTheBannerOfAPrinterWithoutAName) {
    alert = alert_desktop::openAlert(0, 0, nullptr, L"");
    ASSERT_NE(alert, nullptr);

    EXPECT_EQ(Object(control(236)).name(), alert_desktop::text(369));
}

TEST_F(AccessibleControlTest, HidesTheLinesOfASupplyThatHasNone) {
    open(kNoCartridge);

    for (const int line : {1060, 1061, 1062, 137, 132})
        EXPECT_FALSE(::IsWindowVisible(control(line))) << line;
    EXPECT_TRUE(::IsWindowVisible(control(1059)));
}

TEST_F(AccessibleControlTest, TellsThatALinkCanBeOpenedAndOpensIt) {
    open(kFaxWithLink);
    compactAlertWindow(alert->window(), true);
    const Object link(control(kDetail));
    codes.clear();

    EXPECT_EQ(link.role(), ROLE_SYSTEM_LINK);
    EXPECT_EQ(link.state() & STATE_SYSTEM_LINKED, STATE_SYSTEM_LINKED);
    EXPECT_EQ(link.state() & STATE_SYSTEM_FOCUSABLE, STATE_SYSTEM_FOCUSABLE);
    EXPECT_EQ(link.action(), alert_desktop::text(kOpen));
    EXPECT_EQ(link.act(), S_OK);
    EXPECT_TRUE(codes.empty());
    alert_desktop::pump();

    EXPECT_EQ(codes, (Codes{1012}));
}

TEST_F(AccessibleControlTest, IsATextUntilItIsMadeALink) {
    open(kFaxWithLink);
    const Object detail(control(kDetail));

    EXPECT_EQ(detail.role(), ROLE_SYSTEM_STATICTEXT);
    EXPECT_EQ(detail.state() & STATE_SYSTEM_LINKED, 0);
    EXPECT_EQ(detail.action(), L"");
    compactAlertWindow(alert->window(), true);

    EXPECT_EQ(detail.role(), ROLE_SYSTEM_LINK);
}

TEST_F(AccessibleControlTest, SaysThatAButtonIsHiddenOnceItIs) {
    constexpr int kShop = 1018, kRecycle = 134;
    open(kFaxWithLink);
    const Object shop(control(kShop)), recycle(control(kRecycle));
    EXPECT_EQ((shop.state() | recycle.state()) & STATE_SYSTEM_INVISIBLE, 0);

    compactAlertWindow(alert->window(), true);

    EXPECT_NE(shop.state() & STATE_SYSTEM_INVISIBLE, 0);
    EXPECT_NE(recycle.state() & STATE_SYSTEM_INVISIBLE, 0);
}

TEST_F(AccessibleControlTest, TellsWhichControlHasTheFocus) {
    open(kTonerLow);
    ::SetFocus(control(131));

    EXPECT_NE(Object(control(131)).state() & STATE_SYSTEM_FOCUSED, 0);
    EXPECT_EQ(Object(control(130)).state() & STATE_SYSTEM_FOCUSED, 0);
}

TEST_F(AccessibleControlTest, AnswersAReaderOfAnotherThread) {
    open(kManualDuplex);
    const HWND picture = control(231);
    std::wstring name;
    LONG role = 0;
    test::TestThread reader([&] {
        ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        {
            const Object object(picture);
            name = object.name();
            role = object.role();
        }
        ::CoUninitialize();
        return 0U;
    });
    reader.start();
    while (!reader.isFinished())
        alert_desktop::pumpFor(10);

    EXPECT_EQ(name, formatText(alert_desktop::text(kStepPicture), {L"2"}, kTextUnits));
    EXPECT_EQ(role, ROLE_SYSTEM_GRAPHIC);
}

TEST_F(AccessibleControlTest, MayBeKeptLongerThanItsWindow) {
    open(kTonerLow);
    const Object list(control(kChoices));
    const Object picture(control(133));
    alert.reset();

    EXPECT_EQ(picture.name(), L"");
    EXPECT_EQ(list.name(), L"");
    EXPECT_EQ(picture.action(), L"");
    EXPECT_NE(picture.role(), ROLE_SYSTEM_GRAPHIC);
}

// The system may give the number of a window that is gone to another one.
TEST_F(AccessibleControlTest, SaysNothingOfItsOwnAboutAWindowThatIsNotDescribed) {
    open(0);
    const Object described(control(133));
    const HWND other = ::CreateWindowExW(0, L"Static", L"", WS_CHILD | SS_BITMAP, 0, 0, 9, 9,
                                         alert->window(), nullptr, nullptr, nullptr);
    ASSERT_EQ(described.role(), ROLE_SYSTEM_GRAPHIC);
    const LONG roleOfTheSystem = Object(other).role();

    ::SendMessageW(control(133), WM_DESTROY, 0, 0);

    EXPECT_EQ(described.role(), roleOfTheSystem);
}

TEST_F(AccessibleControlTest, BelongsToItsReadersAlone) {
    open(0);
    const Object object(control(133));

    object.get()->AddRef();

    EXPECT_EQ(object.get()->Release(), 1U) << "no reference is left but the reader's";
}

TEST_F(AccessibleControlTest, IsOneObjectInAllItsInterfaces) {
    open(0);
    const Object object(control(133));
    for (const IID& wanted : {__uuidof(IUnknown), __uuidof(IDispatch), __uuidof(IAccessible)}) {
        void* found = nullptr;
        ASSERT_EQ(object.get()->QueryInterface(wanted, &found), S_OK);
        static_cast<IUnknown*>(found)->Release();

        EXPECT_EQ(found, object.get());
    }
    void* found = nullptr;

    EXPECT_EQ(object.get()->QueryInterface(__uuidof(IPersist), &found), E_NOINTERFACE);
}

TEST_F(AccessibleControlTest, LeavesTheFrameOfAControlToTheSystem) {
    open(0);

    EXPECT_EQ(::SendMessageW(control(133), WM_GETOBJECT, 0, OBJID_WINDOW), 0);
}

}  // namespace
