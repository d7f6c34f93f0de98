#pragma once

#include <windows.h>

namespace printpath {

// Replaces the window of the desktop, which Wine does not have. Alerts read the style of this
// window to find out whether the desktop runs from right to left.
class MirroredDesktop {
public:
    // Throws Failure outside Wine, because a user works on the desktop there.
    MirroredDesktop();
    ~MirroredDesktop();
    MirroredDesktop(const MirroredDesktop&) = delete;
    MirroredDesktop& operator=(const MirroredDesktop&) = delete;

private:
    HWND _window = nullptr;
};

}  // namespace printpath
