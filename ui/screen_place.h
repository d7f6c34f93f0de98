#pragma once

// Where a window stands on a screen. Portable arithmetic, in pixels of the screen.
struct ScreenPlace {
    int left;
    int top;
    int right;
    int bottom;

    bool operator==(const ScreenPlace&) const = default;
};

// The place nearest to `window` that lies inside `area`; its size stays. A window that is larger
// than the area shows its upper left part, where its title is.
[[nodiscard]] ScreenPlace keptInside(const ScreenPlace& window, const ScreenPlace& area) noexcept;
