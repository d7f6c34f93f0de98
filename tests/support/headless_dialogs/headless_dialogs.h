#pragma once

#include "ui/dialog_controls.h"
#include "ui/window_types.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

class StatusDialog;

// The alerts' windows without a display: linked instead of the real ones, it records what would be
// shown and lets a test do what a user does. A window is known by the same handle that the code
// under test has. One thread.
namespace headless {

// The template of a general alert with all three links, which the program itself does not have.
inline constexpr int kLinksTemplate = 9001;

struct Control {
    std::wstring text;
    std::wstring name;  // the name of a picture for screen readers
    bool visible = true;
    bool enabled = true;
    bool isLink = false;
    bool isUnderlined = false;
    bool isHeadline = false;
    int picture = 0;                // bitmap id that the control was given
    void* pictureModule = nullptr;  // where it was loaded from, unless the window paints it
    int placedAt = 0;               // the control whose place it took
    std::vector<std::wstring> choices;
    int chosen = -1;
};

struct Window {
    int templateId = 0;
    std::wstring title;
    int x = 0;
    int y = 0;
    bool visible = false;
    bool compact = false;
    std::wstring linkAction;      // what screen readers are told that a link does
    bool detailMadeLink = false;  // whether the detail became a link when it was made compact
    int icon = 0;
    void* iconModule = nullptr;
    int defaultButton = 0;
    std::map<int, Control> controls;
    StatusDialog* dialog = nullptr;    // the object of the window
    StatusDialog* receiver = nullptr;  // gets the window's messages; null after it has closed
};

struct Message {
    std::wstring text;
    std::wstring caption;
    bool rightToLeft = false;
    WindowHandle owner = nullptr;
};

struct CartridgeCheck {
    void* module;
    void* strings;
    std::wstring printerName;
};

// Forgets everything. Windows that are still open are removed without a message to their objects.
void reset();

// The windows that exist, hidden ones included, in the order in which they opened.
[[nodiscard]] std::vector<WindowHandle> windows();
// How many alerts were shown, including closed ones, and how many of them the end of the document
// has dismissed.
[[nodiscard]] int openedWindows();
[[nodiscard]] int dismissedWindows();
// The last of them; the window is gone.
[[nodiscard]] WindowHandle lastDismissed();
// Null when the window is gone.
[[nodiscard]] Window* find(WindowHandle window);
// A control of a window; the test fails (throws) when either is missing.
[[nodiscard]] Control& control(WindowHandle window, int id);
[[nodiscard]] const std::vector<Message>& messages();
[[nodiscard]] const std::vector<CartridgeCheck>& cartridgeChecks();

// A window for code that needs one without an alert. It lives until reset().
WindowHandle openWindow(int templateId);

// What a user does. If a user could not do it, because the control is missing, hidden or disabled,
// nothing happens and the result is false.
bool press(WindowHandle window, int control);
bool choose(WindowHandle window, int index);
void typeKey(WindowHandle window, wchar_t letter);
void typeWithAlt(WindowHandle window, wchar_t letter);
void pressEscape(WindowHandle window);
void closeBox(WindowHandle window);
// Any command message, as controls and accelerators send it.
void sendCommand(WindowHandle window, MessageWord wParam, MessageLong lParam = 0);

// The text that every control has from its template in windows that open from now on.
void setTemplateText(std::wstring text);
// With true, no window can be created until this is called with false.
void setCreationFails(bool fails);
// Runs while each message box is open, as the system serves other windows then.
void setWhileMessageIsOpen(std::function<void()> action);
// Runs each time before a window is destroyed.
void setWhenAWindowGoes(std::function<void()> action);

}  // namespace headless
