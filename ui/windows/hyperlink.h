#pragma once

#include <windows.h>

// Makes a static control a link: blue (under a high-contrast scheme in the system's colour for
// links), with a hand for a cursor, and a command of its dialog when it is clicked. It is a tab
// stop and answers Space and Enter like a click. Control and dialog get their own procedures back
// when they are destroyed. std::bad_alloc when the system cannot keep what belongs to the link,
// which is then not or only partly one.
void SetHyperLink(HWND control);
[[nodiscard]] bool isHyperLink(HWND control);

// A dialog whose first tab stop is a link would open with the focus on it, and Enter would leave
// the dialog's question unanswered. Gives the focus to the first tab stop that is no link. False
// where the system's own choice is right; for WM_INITDIALOG.
bool focusPastLinks(HWND dialog);

// Gives a control its own font again, underlined when asked. The font lives as long as the
// control's dialog, whose procedure must release its WindowResources.
void setLinkFont(HWND control, bool underline);
