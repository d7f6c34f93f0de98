#pragma once

#include "ui/window_types.h"

// What the owner of the alerts does to an alert's window. Null, and a window that is gone, are
// ignored. Main thread.

// Cuts the window off from its object, ends the dialog with result 1 and destroys the window.
void dismissAlertWindow(WindowHandle window);

// Cuts the window off from its object and destroys it: ending a dialog without an owner's loop only
// hides it.
void destroyAlertWindow(WindowHandle window);

// The small form of the fax alerts: without Shop and Return, the OK button higher, the window
// lower. With `detailIsLink` the detail becomes a link.
void compactAlertWindow(WindowHandle window, bool detailIsLink);
