#include "tools/gauges/gauges.h"

#include "tools/printpath/windows/handle.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>
#include <cstdio>
#include <memory>

namespace {

using printpath::fileHandle;
using printpath::Handle;

// Buffers come from the system and not from `new`, because a reading must not change the number of
// heap blocks that it counts.
struct ReleasePages {
    void operator()(void* pages) const noexcept { ::VirtualFree(pages, 0, MEM_RELEASE); }
};
using Pages = std::unique_ptr<void, ReleasePages>;

Pages takePages(std::size_t bytes) {
    return Pages(::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
}

struct HandleEntry {  // as the system lays it out
    ULONG processId;
    UCHAR type;
    UCHAR flags;
    USHORT handle;
    void* object;
    ULONG access;
};
struct HandleTable {
    ULONG count;
    HandleEntry entries[1];
};

long countHandles(DWORD processId) {
    constexpr auto kAllHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    constexpr ULONG kLargest = 64U << 20U;
    for (ULONG bytes = 1U << 20U; bytes <= kLargest; bytes *= 2) {
        const Pages pages = takePages(bytes);
        if (pages == nullptr) return -1;
        ULONG needed = 0;
        const NTSTATUS status =
            ::NtQuerySystemInformation(kAllHandles, pages.get(), bytes, &needed);
        if (status != 0) continue;
        const auto* const table = static_cast<const HandleTable*>(pages.get());
        long count = 0;
        for (ULONG index = 0; index < table->count; ++index) {
            if (table->entries[index].processId == processId) ++count;
        }
        return count;
    }
    return -1;
}

long countThreads(DWORD processId) {
    const Handle snapshot = fileHandle(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    if (!snapshot) return -1;
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    long count = 0;
    for (BOOL more = ::Thread32First(snapshot.get(), &entry); more != FALSE;
         more = ::Thread32Next(snapshot.get(), &entry)) {
        if (entry.th32OwnerProcessID == processId) ++count;
    }
    return count;
}

struct WindowCount {
    DWORD processId;
    long count;
};

BOOL CALLBACK countChild(HWND, LPARAM parameter) {
    ++reinterpret_cast<WindowCount*>(parameter)->count;
    return TRUE;
}

BOOL CALLBACK countTopLevel(HWND window, LPARAM parameter) {
    auto* const windows = reinterpret_cast<WindowCount*>(parameter);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner != windows->processId) return TRUE;
    ++windows->count;
    ::EnumChildWindows(window, countChild, parameter);
    return TRUE;
}

long countWindows(DWORD processId) {
    WindowCount windows{processId, 0};
    ::EnumWindows(countTopLevel, reinterpret_cast<LPARAM>(&windows));
    return windows.count;
}

// The table of GDI objects is in the memory of the process, and its environment block points to it.
// It has 65536 entries of 24 bytes, with the type of the object at offset 14, which is 0 when free.
constexpr std::size_t kGdiTableOffset = 0xF8;
constexpr std::size_t kGdiEntries = 65536;
constexpr std::size_t kGdiEntryBytes = 24;
constexpr std::size_t kGdiTypeOffset = 14;

const unsigned char* environmentBlock(HANDLE process) {
    PROCESS_BASIC_INFORMATION information{};
    ULONG length = 0;
    const NTSTATUS status = ::NtQueryInformationProcess(process, ProcessBasicInformation,
                                                        &information, sizeof information, &length);
    return status == 0 ? reinterpret_cast<const unsigned char*>(information.PebBaseAddress)
                       : nullptr;
}

long countGdiObjects(HANDLE process) {
    const unsigned char* const block = environmentBlock(process);
    if (block == nullptr) return -1;
    const void* table = nullptr;
    SIZE_T got = 0;
    if (::ReadProcessMemory(process, block + kGdiTableOffset, &table, sizeof table, &got) == FALSE)
        return -1;
    if (table == nullptr) return 0;  // the process has not called GDI yet
    constexpr std::size_t kTableBytes = kGdiEntries * kGdiEntryBytes;
    const Pages pages = takePages(kTableBytes);
    if (pages == nullptr ||
        ::ReadProcessMemory(process, table, pages.get(), kTableBytes, &got) == FALSE)
        return -1;
    const auto* const entries = static_cast<const unsigned char*>(pages.get());
    long count = 0;
    for (std::size_t index = 0; index < kGdiEntries; ++index) {
        const unsigned char* const type = entries + index * kGdiEntryBytes + kGdiTypeOffset;
        if (type[0] != 0 || type[1] != 0) ++count;
    }
    return count;
}

long countHeapBlocks() {
    constexpr DWORD kHeapLimit = 64;
    HANDLE heaps[kHeapLimit];
    const DWORD heapCount = ::GetProcessHeaps(kHeapLimit, heaps);
    long count = 0;
    for (DWORD index = 0; index < heapCount && index < kHeapLimit; ++index) {
        PROCESS_HEAP_ENTRY entry{};
        ::HeapLock(heaps[index]);
        while (::HeapWalk(heaps[index], &entry) != FALSE) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) ++count;
        }
        ::HeapUnlock(heaps[index]);
    }
    return count;
}

long committedKiB(HANDLE process) {
    constexpr SIZE_T kBytesPerKiB = 1024;
    PROCESS_MEMORY_COUNTERS counters{};
    if (::K32GetProcessMemoryInfo(process, &counters, sizeof counters) == FALSE) return -1;
    return static_cast<long>(counters.PagefileUsage / kBytesPerKiB);
}

Gauges read(HANDLE process, DWORD processId) {
    Gauges gauges;
    gauges.handles = countHandles(processId);
    gauges.gdiObjects = countGdiObjects(process);
    gauges.windows = countWindows(processId);
    gauges.threads = countThreads(processId);
    gauges.memoryKiB = committedKiB(process);
    return gauges;
}

}  // namespace

Gauges readGauges() {
    Gauges gauges = read(::GetCurrentProcess(), ::GetCurrentProcessId());
    gauges.heapBlocks = countHeapBlocks();
    return gauges;
}

Gauges readGaugesOf(std::uint32_t processId) {
    const Handle process(
        ::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
    if (process == nullptr) return {-1, -1, -1, -1, 0, -1};
    return read(process.get(), processId);
}

GaugeText::GaugeText(const Gauges& before, const Gauges& after) {
    add("handles", before.handles, after.handles);
    add("GDI objects", before.gdiObjects, after.gdiObjects);
    add("windows", before.windows, after.windows);
    add("threads", before.threads, after.threads);
    add("heap blocks", before.heapBlocks, after.heapBlocks);
}

void GaugeText::add(const char* name, long before, long after) {
    if (after <= before || _used >= kTextBytes) return;
    const char* const separator = _used == 0 ? "" : ", ";
    const int written = std::snprintf(_text + _used, static_cast<std::size_t>(kTextBytes - _used),
                                      "%s%s %ld -> %ld", separator, name, before, after);
    if (written > 0) _used += written;
}
