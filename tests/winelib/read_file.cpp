// What our sources call instead of ReadFile: Wine refuses to read from a pipe into memory that it
// has not mapped itself, and the heap here is the sanitizer's.
#include <windows.h>
#include <cstring>
#include <memory>

#undef ReadFile

namespace {

struct FreePages {
    void operator()(void* pages) const noexcept { ::VirtualFree(pages, 0, MEM_RELEASE); }
};

}  // namespace

extern "C" BOOL WINAPI ReadFile(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*);

extern "C" BOOL WINAPI readFileIntoAnyMemory(HANDLE file, void* to, DWORD count, DWORD* arrived,
                                             OVERLAPPED* overlapped) {
    const std::unique_ptr<void, FreePages> pages(
        ::VirtualAlloc(nullptr, count + 1, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    if (pages == nullptr) return FALSE;
    const BOOL result = ::ReadFile(file, pages.get(), count, arrived, overlapped);
    const DWORD error = ::GetLastError();
    std::memcpy(to, pages.get(), *arrived);
    ::SetLastError(error);
    return result;
}
