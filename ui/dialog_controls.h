#pragma once

#include "ui/window_types.h"

#include <cstdint>
#include <string>

// What the rules of an alert do to its window, which is all they know about windows. A control that
// is missing from the template is ignored, and reads as empty. Main thread.
namespace dialog_controls {

[[nodiscard]] bool exists(WindowHandle window, int control);
// Whether the user can use it: it exists, is enabled and visible.
[[nodiscard]] bool usable(WindowHandle window, int control);

[[nodiscard]] std::wstring text(WindowHandle window, int control);
void setText(WindowHandle window, int control, const std::wstring& text);
// Keeps the text of the template where `text` is empty.
inline void setTextIfAny(WindowHandle window, int control, const std::wstring& text) {
    if (!text.empty()) setText(window, control, text);
}
void setTitle(WindowHandle window, const std::wstring& title);
// The name by which a screen reader knows a picture.
void setName(WindowHandle window, int control, const std::wstring& name);
// Tells screen readers what the controls are; what a link does is `linkAction`, a verb.
void describe(WindowHandle window, const std::wstring& linkAction);

void show(WindowHandle window, int control, bool visible);
void hideWindow(WindowHandle window);
// Opens the window at a place of the screen, in pixels of 96 dots per inch, or as near as shows all
// of it.
void moveWindow(WindowHandle window, int x, int y);
// Puts a control at the top left corner of another one; its size stays.
void placeAt(WindowHandle window, int control, int where);

// Pictures and icons are resources of `module`, which is not owned.
void setIcons(WindowHandle window, void* module, int icon);
void setPicture(WindowHandle window, int control, void* module, int bitmap);

enum class Emphasis { Headline, Link };
void setFont(WindowHandle window, int control, Emphasis emphasis);
// Blue, with a hand for a cursor, and a command of the dialog when it is clicked.
void makeLink(WindowHandle window, int control);
// The button that Enter stands for.
void setDefaultButton(WindowHandle window, int control);

void addChoice(WindowHandle window, int list, const std::wstring& text);
void choose(WindowHandle window, int list, int index);
// Index of what is chosen; 0, the prompt, where the list is missing.
[[nodiscard]] int choice(WindowHandle window, int list);

// Returns when the user has closed the box. By then the alert may be gone: other alerts are served
// while it is open.
void showMessage(WindowHandle window, const std::wstring& text, const std::wstring& caption,
                 bool rightToLeft);

}  // namespace dialog_controls
