#pragma once

#include <windows.h>

namespace printpath {

// Stands in for the desktop's own window, which Wine lacks: alerts look at its style to find out
// whether the desktop runs from right to left.
class MirroredDesktop {
public:
    // Throws Failure outside Wine, where the desktop is the user's.
    MirroredDesktop();
    ~MirroredDesktop();
    MirroredDesktop(const MirroredDesktop&) = delete;
    MirroredDesktop& operator=(const MirroredDesktop&) = delete;

private:
    HWND _window = nullptr;
};

}  // namespace printpath
