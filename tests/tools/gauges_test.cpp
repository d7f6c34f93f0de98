#include "tools/gauges/gauges.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr int kObjects = 10;

class GaugesTest : public testing::Test {
protected:
    // The first object of a kind makes the system create things that stay: window classes and the
    // table of GDI objects. The first window of a thread also brings a window for input methods,
    // which stays until the thread's last window is gone. So create the first ones before a test.
    void SetUp() override {
        ::DeleteObject(::CreateSolidBrush(RGB(1, 2, 3)));
        _firstWindow = hiddenWindow();
        static_cast<void>(readGauges());
    }
    void TearDown() override { ::DestroyWindow(_firstWindow); }

    static HWND hiddenWindow() {
        return ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr,
                                 nullptr, ::GetModuleHandleW(nullptr), nullptr);
    }

private:
    HWND _firstWindow = nullptr;
};

DWORD WINAPI waitForEvent(void* event) {
    ::WaitForSingleObject(event, INFINITE);
    return 0;
}

TEST_F(GaugesTest, StayFlatWhileNothingHappens) {
    const Gauges before = readGauges();

    const Gauges after = readGauges();

    EXPECT_STREQ(GaugeText(before, after).text(), "");
}

TEST_F(GaugesTest, CountAKernelHandleThatStaysOpen) {
    const Gauges before = readGauges();

    std::vector<HANDLE> events;
    for (int count = 0; count < kObjects; ++count)
        events.push_back(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const Gauges after = readGauges();
    for (HANDLE event : events)
        ::CloseHandle(event);

    EXPECT_EQ(after.handles, before.handles + kObjects);
    EXPECT_EQ(readGauges().handles, before.handles);
}

TEST_F(GaugesTest, CountAGdiObjectThatIsNotDeleted) {
    const Gauges before = readGauges();

    std::vector<HGDIOBJ> pens;
    for (int count = 0; count < kObjects; ++count)
        pens.push_back(::CreatePen(PS_SOLID, count + 2, RGB(count, 0, 0)));
    const Gauges after = readGauges();
    for (HGDIOBJ pen : pens)
        ::DeleteObject(pen);

    EXPECT_EQ(after.gdiObjects, before.gdiObjects + kObjects);
    EXPECT_EQ(readGauges().gdiObjects, before.gdiObjects);
}

TEST_F(GaugesTest, CountAWindowThatIsOnlyHidden) {
    const Gauges before = readGauges();

    HWND window = hiddenWindow();
    const Gauges after = readGauges();
    ::DestroyWindow(window);

    EXPECT_EQ(after.windows, before.windows + 1);
    EXPECT_EQ(readGauges().windows, before.windows);
}

TEST_F(GaugesTest, CountAThreadThatRuns) {
    HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const Gauges before = readGauges();

    HANDLE thread = ::CreateThread(nullptr, 0, waitForEvent, event, 0, nullptr);
    const Gauges after = readGauges();
    ::SetEvent(event);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
    ::CloseHandle(event);

    EXPECT_EQ(after.threads, before.threads + 1);
}

TEST_F(GaugesTest, CountAHeapBlockThatIsNotFreed) {
    constexpr SIZE_T kBytes = 100;
    HANDLE heap = ::GetProcessHeap();
    const Gauges before = readGauges();

    void* blocks[kObjects];
    for (void*& block : blocks)
        block = ::HeapAlloc(heap, 0, kBytes);
    const Gauges after = readGauges();
    for (void* block : blocks)
        ::HeapFree(heap, 0, block);

    EXPECT_EQ(after.heapBlocks, before.heapBlocks + kObjects);
    EXPECT_EQ(readGauges().heapBlocks, before.heapBlocks);
}

TEST_F(GaugesTest, ReadAnotherProcessAsThisOneFromOutside) {
    const Gauges own = readGauges();

    const Gauges outside = readGaugesOf(::GetCurrentProcessId());

    EXPECT_EQ(outside.windows, own.windows);
    EXPECT_EQ(outside.gdiObjects, own.gdiObjects);
    EXPECT_EQ(outside.threads, own.threads);
    EXPECT_GT(outside.memoryKiB, 0);
}

TEST_F(GaugesTest, NameWhatGrew) {
    Gauges before;
    Gauges after;
    after.handles = 2;
    after.windows = 1;

    EXPECT_STREQ(GaugeText(before, after).text(), "handles 0 -> 2, windows 0 -> 1");
}

}  // namespace
