#include "ui/screen_place.h"

#include <algorithm>

namespace {

// One direction of it. The lower bound is applied last, so it wins where the window is too large.
int moveInto(int low, int high, int areaLow, int areaHigh) noexcept {
    return std::max(areaLow, std::min(low, areaHigh - (high - low))) - low;
}

}  // namespace

ScreenPlace keptInside(const ScreenPlace& window, const ScreenPlace& area) noexcept {
    const int across = moveInto(window.left, window.right, area.left, area.right);
    const int down = moveInto(window.top, window.bottom, area.top, area.bottom);
    return {window.left + across, window.top + down, window.right + across, window.bottom + down};
}
