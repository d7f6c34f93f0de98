#pragma once

#include <windows.h>
#include <string>
#include <vector>

// Answers every message box of this thread with OK and records how it was asked for. Wine shows a
// box that reads from right to left like any other, so that only the flags tell the difference.
// Only one object may exist at a time.
class MessageBoxes {
public:
    struct Box {
        HWND owner;
        std::wstring text, caption;
        DWORD flags;
    };

    MessageBoxes();
    ~MessageBoxes();
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;

    [[nodiscard]] const std::vector<Box>& all() const noexcept;

private:
    HHOOK _hook;
};
