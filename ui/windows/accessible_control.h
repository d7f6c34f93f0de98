#pragma once

#include <windows.h>

#include <string>

// What screen readers (Microsoft Active Accessibility) are told about the controls of a dialog. The
// system's own answers are kept, but for
// - the role of a link and of a picture, which are static texts to the system,
// - the name of a picture, which the system does not read from its window,
// - the name of a list, which is the label before it,
// - the shortcut of a text, a picture or a link: there is none.
// A link also says `linkAction`, a verb, and does it on request. Every control of the dialog is
// described; so call this when they all exist. std::bad_alloc when not all of them can be.
// Main thread.
void describeControls(HWND dialog, const std::wstring& linkAction);
