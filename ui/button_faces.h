#pragma once

#include <cstdint>
#include <span>

// A button that the alert draws itself: bitmap ids of its face, and the text on it. The table lives
// as long as the program; any thread may read it.
struct ButtonFace {
    int control;
    int sizedBy;  // the button gets the size of this bitmap
    int pressed;
    int normal;
    std::uint32_t caption;  // string id
    bool whiteCaption;      // black otherwise
};

// Every drawn button, in the order in which they are sized.
[[nodiscard]] std::span<const ButtonFace> buttonFaces();
// Null for a control that is not drawn.
[[nodiscard]] const ButtonFace* buttonFace(int control);
