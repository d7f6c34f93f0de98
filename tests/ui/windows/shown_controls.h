#pragma once

#include <windows.h>

// What a person sees of a dialog, checked on its real window. Each function reports to the running
// test; the dialog must be visible.

// Nothing is outside of the dialog, no text or choice is cut off, and no texts, controls or
// pictures overlap: as the dialog was opened, and at each scale to which its screen may change. It
// stays at the last of them.
void expectNeat(HWND dialog);

// There is room for texts twice as long, on the button with the leaf half as long again. Two
// controls whose widths follow one of their texts are looked at together.
void expectRoomForTwice(HWND dialog);

// Controls follow each other as one reads: from line to line, and within a line in the direction of
// the dialog. So does the focus with Tab.
void expectInReadingOrder(HWND dialog);
