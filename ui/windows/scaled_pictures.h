#pragma once

#include "ui/stored_picture.h"

#include <windows.h>
#include <vector>

// The pictures of one dialog in the size of its screen, so that each is averaged once and not at
// every painting. Main thread.
class ScaledPictures {
public:
    // A picture of `module`, averaged anew if the scale or the face colour is not that of the last
    // call. The result is valid until the next call. Throws std::bad_alloc.
    const ScaledPicture& of(HINSTANCE module, int bitmapId, int dpi);

private:
    struct Kept {
        int bitmapId = 0;
        int dpi = 0;
        Rgb face = 0;
        ScaledPicture picture;
    };
    std::vector<Kept> _kept;
};

// As the resource of `module` holds it; of the size 0 x 0 if there is none with this id. Valid as
// long as the module is loaded.
[[nodiscard]] StoredPicture storedPicture(HINSTANCE module, int bitmapId) noexcept;
