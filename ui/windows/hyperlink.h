#pragma once

#include <windows.h>

// Makes a static control a link: blue (under a high-contrast scheme in the system's colour for
// links), with a hand for a cursor, and a command of its dialog when it is clicked. Control and
// dialog get their own procedures back when they are destroyed. std::bad_alloc when the system
// cannot keep what belongs to the link, which is then not or only partly one.
void SetHyperLink(HWND control);

// Gives a control its own font again, underlined when asked. The font lives as long as the
// control's dialog, whose procedure must release its WindowResources.
void setLinkFont(HWND control, bool underline);
