#pragma once

#include <cstdint>

// The system's window types as portable names, so that what an alert says needs no system header.
// On Windows they are the system's own types.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the system chose it
struct HWND__;
using WindowHandle = HWND__*;  // never owned by what holds it
using WindowMessage = unsigned int;
using MessageWord = std::uintptr_t;  // wParam
using MessageLong = std::intptr_t;   // lParam
using DialogResult = std::intptr_t;  // what a dialog procedure answers

// A wParam may carry two words of 16 bits.
inline constexpr MessageWord kLowWordMask = 0xFFFF;
inline constexpr unsigned kHighWordShift = 16;

// The two words of the wParam of a WM_COMMAND message: whose it is, and what happened to it.
[[nodiscard]] constexpr int commandControl(MessageWord wParam) noexcept {
    return static_cast<int>(wParam & kLowWordMask);
}
[[nodiscard]] constexpr unsigned commandNotice(MessageWord wParam) noexcept {
    return static_cast<unsigned>((wParam >> kHighWordShift) & kLowWordMask);
}
