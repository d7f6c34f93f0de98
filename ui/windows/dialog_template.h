#pragma once

#include <windows.h>
#include <cstddef>
#include <span>
#include <vector>

// Dialogs from templates of a module. On a desktop that runs from right to left the dialog is
// mirrored: its template is changed in a copy, since resources are read-only memory. The copy may
// throw std::bad_alloc. Main thread.

// Modeless and without an owner, not visible yet. Null when it cannot be made.
[[nodiscard]] HWND createDialog(HINSTANCE module, int templateId, DLGPROC procedure, LPARAM value);

// Modal over `owner`; returns what the dialog was ended with, -1 when it cannot be made.
INT_PTR runDialog(HINSTANCE module, int templateId, HWND owner, DLGPROC procedure);

// A copy of a template, mirrored. Empty when `original` is too short to be one.
[[nodiscard]] std::vector<std::byte> mirroredTemplate(std::span<const std::byte> original);

// Lets the picture controls of a mirrored dialog draw from left to right: what they show has a
// left and a right of its own. Their places stay mirrored.
void keepPicturesUnmirrored(HWND dialog);
