#include "ui/windows/icon_loading.h"

Icon loadIcon(HINSTANCE module, int icon, int size) {
    return Icon(static_cast<HICON>(
        ::LoadImageW(module, MAKEINTRESOURCEW(icon), IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}
