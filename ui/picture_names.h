#pragma once

#include <cstdint>

// String id of the name that a screen reader speaks for what `bitmap` shows in `control`; 0 where
// the picture needs no name. Any thread.
[[nodiscard]] std::uint32_t pictureName(int control, int bitmap);
