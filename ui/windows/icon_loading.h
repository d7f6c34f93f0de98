#pragma once

#include "ui/windows/gdi_handles.h"

// An icon of `module` of `size` by `size` pixels, made from the nearest size that it has. Null
// where it is missing.
[[nodiscard]] Icon loadIcon(HINSTANCE module, int icon, int size);
