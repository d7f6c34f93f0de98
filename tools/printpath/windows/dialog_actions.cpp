#include "tools/printpath/key_press.h"
#include "tools/printpath/windows/actions.h"
#include "tools/printpath/windows/alert_input.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/scenario_run.h"
#include "tools/printpath/windows/screen_picture.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"
#include "ui/resource_ids.h"

namespace printpath {

namespace {

constexpr int kRaiseTries = 40;
constexpr DWORD kRaiseTryMs = 50;

int controlOf(const Step& step) {
    return static_cast<int>(step["control"].number);
}

std::size_t countOf(const Step& step) {
    return static_cast<std::size_t>(step["count"].number);
}

std::string dialogs(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " dialog" : " dialogs");
}

constexpr int kAnyControl = 0;

// The newest open dialog that shows the text anywhere and has the control; null when there is none.
HWND dialogWith(ScenarioRun& run, const std::wstring& text, int control = kAnyControl) {
    for (const HWND alert : run.alerts())
        if ((control == kAnyControl || ::GetDlgItem(alert, control) != nullptr) &&
            allTexts(alert).find(text) != std::wstring::npos)
            return alert;
    return nullptr;
}

void waitDialog(ScenarioRun& run, const Step& step) {
    const std::wstring text = wideFromUtf8(step["text"].text);
    const Value& with = step["with"];
    const int control = with.given ? static_cast<int>(with.number) : kAnyControl;
    const std::string what = "a dialog that shows " + shown(text) +
                             (with.given ? " and has the control " + with.text : "");
    run.waitUntil(step, what, [&run, &text, control] {
        run.dialog = dialogWith(run, text, control);
        return run.dialog != nullptr;
    });
}

void waitNoDialog(ScenarioRun& run, const Step& step) {
    const std::wstring text = wideFromUtf8(step["text"].text);
    const std::string what =
        text.empty() ? "all dialogs to close" : "the dialog with " + shown(text) + " to close";
    run.waitUntil(step, what, [&run, &text] {
        return text.empty() ? run.alerts().empty() : dialogWith(run, text) == nullptr;
    });
}

void waitAlerts(ScenarioRun& run, const Step& step) {
    run.waitUntil(step, dialogs(countOf(step)) + " to be open",
                  [&] { return run.alerts().size() == countOf(step); });
}

void press(ScenarioRun& run, const Step& step) {
    pressControl(run.dialog, controlOf(step));
}

void click(ScenarioRun& run, const Step& step) {
    clickControl(run.dialog, controlOf(step));
}

void postKeyStep(ScenarioRun& run, const Step& step) {
    postKey(run.dialog, parseKey(step["key"].text).value());
}

// The keys of a user go to the message box that stands over the dialog.
void typeKeyStep(ScenarioRun& run, const Step& step) {
    const HWND box = run.messageBox();
    typeKey(box != nullptr ? box : run.dialog, parseKey(step["key"].text).value());
}

void choose(ScenarioRun& run, const Step& step) {
    // The words of the keyword have the same order as the entries of the list.
    chooseEntry(run.dialog, IDC_SNOOZE_CHOICE, static_cast<int>(step["snooze"].number));
}

void closeDialog(ScenarioRun& run, const Step&) {
    if (!::IsWindow(run.dialog)) throw Failure("the dialog is not open any more");
    ::PostMessageW(run.dialog, WM_CLOSE, 0, 0);
}

// Closes each open alert as a user would: chooses a time if the alert asks for one, then presses OK
// or, if there is no OK button, the close box.
void closeAlerts(ScenarioRun& run, const Step& step) {
    for (const HWND dialog : run.alerts()) {
        if (step["keep"].given && dialog == run.dialog) continue;
        // While the monitor is still opening alerts it does not handle our messages.
        run.waitUntil(step, "a dialog to answer", [dialog] { return answers(dialog); });
        if (step["choose"].given && isUsable(dialog, IDC_SNOOZE_CHOICE))
            chooseEntry(dialog, IDC_SNOOZE_CHOICE, static_cast<int>(step["choose"].number));
        if (isUsable(dialog, IDC_ALERT_OK))
            pressControl(dialog, IDC_ALERT_OK);
        else
            ::PostMessageW(dialog, WM_CLOSE, 0, 0);
    }
}

RECT screenArea() {
    return {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

// Tries to activate the dialog, so that a picture shows it as a user sees it who works with it.
void bringToFront(HWND dialog) {
    ::SetForegroundWindow(dialog);
    for (int tries = 0; tries < kRaiseTries && ::GetForegroundWindow() != dialog; ++tries)
        ::Sleep(kRaiseTryMs);
}

// The values have the same order as the words of the keyword.
enum class Area { Dialog, Message, Screen };

// The rectangle of the screen that a picture of this area shows.
RECT pictureArea(ScenarioRun& run, Area area) {
    const RECT screen = screenArea();
    if (area == Area::Screen) return screen;
    const HWND window = area == Area::Message ? run.messageBox() : run.dialog;
    if (!::IsWindow(window)) throw Failure("there is no dialog to take a picture of");
    bringToFront(window);
    RECT place{};
    ::GetWindowRect(window, &place);
    RECT visible{};
    ::IntersectRect(&visible, &screen, &place);
    return visible;
}

void screenshot(ScenarioRun& run, const Step& step) {
    const ScreenPicture picture =
        captureWhenStill(pictureArea(run, static_cast<Area>(step["area"].number)));
    if (run.options().pictures.empty()) return;
    const auto file = run.options().pictures / (wideFromUtf8(step["name"].text) + L".bmp");
    std::error_code ignored;
    std::filesystem::create_directories(run.options().pictures, ignored);
    saveBitmap(picture, file);
    run.timeline().note("picture " + pathText(file.filename()));
}

void expectAlerts(ScenarioRun& run, const Step& step) {
    run.settle();
    const std::size_t open = run.alerts().size();
    if (open != countOf(step))
        throw Failure(dialogs(countOf(step)) + " should be open and not " + std::to_string(open) +
                      "; " + run.describeOpenDialogs());
}

void expectEqual(const std::string& what, const std::wstring& found, const std::string& wanted) {
    if (utf8FromWide(found) != wanted)
        throw Failure(what + " is " + shown(found) + " and should be " + shown(wanted));
}

void expectTitle(ScenarioRun& run, const Step& step) {
    existingControl(run.dialog, IDC_ALERT_OK);
    expectEqual("the title", textOf(run.dialog), step["text"].text);
}

std::string named(const Step& step) {
    return "the text of control " + step["control"].text;
}

void expectText(ScenarioRun& run, const Step& step) {
    const HWND control = existingControl(run.dialog, controlOf(step));
    expectEqual(named(step), textOf(control), step["text"].text);
}

void expectTextWith(ScenarioRun& run, const Step& step) {
    const std::wstring found = textOf(existingControl(run.dialog, controlOf(step)));
    if (found.find(wideFromUtf8(step["text"].text)) == std::wstring::npos)
        throw Failure(named(step) + " is " + shown(found) + ", without " +
                      shown(step["text"].text));
}

void expectVisible(ScenarioRun& run, const Step& step) {
    if (!::IsWindowVisible(existingControl(run.dialog, controlOf(step))))
        throw Failure("control " + step["control"].text + " is hidden");
}

void expectHidden(ScenarioRun& run, const Step& step) {
    if (::IsWindowVisible(existingControl(run.dialog, controlOf(step))))
        throw Failure("control " + step["control"].text + " is visible");
}

void expectFocus(ScenarioRun& run, const Step& step) {
    const HWND control = existingControl(run.dialog, controlOf(step));
    run.waitUntil(step, "control " + step["control"].text + " to have the focus",
                  [&] { return focusOf(run.dialog) == control; });
}

void expectPosition(ScenarioRun& run, const Step& step) {
    RECT place{};
    if (!::GetWindowRect(run.dialog, &place)) throw Failure("the dialog is not open any more");
    if (place.left != step["left"].number || place.top != step["top"].number)
        throw Failure("the dialog stands at " + std::to_string(place.left) + ", " +
                      std::to_string(place.top));
}

void expectMessage(ScenarioRun& run, const Step& step) {
    HWND box = nullptr;
    run.waitUntil(step, "a message box", [&] { return (box = run.messageBox()) != nullptr; });
    const std::wstring found = headlineOf(box);
    if (found.find(wideFromUtf8(step["text"].text)) == std::wstring::npos)
        throw Failure("the message box says " + shown(found) + ", without " +
                      shown(step["text"].text));
    if (step["caption"].given) expectEqual("the caption", textOf(box), step["caption"].text);
}

void dismissMessage(ScenarioRun& run, const Step& step) {
    const HWND box = run.messageBox();
    if (box == nullptr) throw Failure("no message box is open");
    ::PostMessageW(box, WM_CLOSE, 0, 0);
    run.waitUntil(step, "the message box to close", [box] { return !::IsWindow(box); });
}

void expectNoMessage(ScenarioRun& run, const Step&) {
    run.settle();
    const HWND box = run.messageBox();
    if (box != nullptr) throw Failure("a message box says " + shown(headlineOf(box)));
}

}  // namespace

std::vector<Action> dialogActions() {
    return {
        {"wait-dialog", waitDialog},
        {"wait-no-dialog", waitNoDialog},
        {"wait-alerts", waitAlerts},
        {"press", press},
        {"click", click},
        {"post-key", postKeyStep},
        {"type-key", typeKeyStep},
        {"choose", choose},
        {"close-dialog", closeDialog},
        {"close-alerts", closeAlerts},
        {"screenshot", screenshot},
        {"expect-alerts", expectAlerts},
        {"expect-title", expectTitle},
        {"expect-text", expectText},
        {"expect-text-with", expectTextWith},
        {"expect-visible", expectVisible},
        {"expect-hidden", expectHidden},
        {"expect-focus", expectFocus},
        {"expect-position", expectPosition},
        {"expect-message", expectMessage},
        {"dismiss-message", dismissMessage},
        {"expect-no-message", expectNoMessage},
    };
}

}  // namespace printpath
