#pragma once

// The win32 thread model has no std::mutex, from which GoogleTest builds this one class.
#if defined(_WIN32)
#define GTEST_HAS_NOTIFICATION_ 1
#include <windows.h>

namespace testing::internal {

class Notification {
public:
    Notification() : _event(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
    ~Notification() { CloseHandle(_event); }
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;
    void Notify() { SetEvent(_event); }
    void WaitForNotification() { WaitForSingleObject(_event, INFINITE); }

private:
    HANDLE _event;
};

}  // namespace testing::internal
#endif
