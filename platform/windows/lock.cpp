#include "platform/lock.h"

#include <windows.h>
#include <new>

namespace platform {
namespace {

CRITICAL_SECTION* section(unsigned char* storage) noexcept {
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage));
}

}  // namespace

KernelMutex::KernelMutex() noexcept : _handle(::CreateMutexW(nullptr, FALSE, nullptr)) {}

KernelMutex::~KernelMutex() {
    if (_handle != nullptr) ::CloseHandle(_handle);
}

void KernelMutex::lock(std::uint32_t timeoutMs) noexcept {
    static_assert(kNoTimeout == INFINITE);
    if (_handle != nullptr) ::WaitForSingleObject(_handle, timeoutMs);
}

void KernelMutex::unlock() noexcept {
    if (_handle != nullptr) ::ReleaseMutex(_handle);
}

CriticalSection::CriticalSection() noexcept {
    static_assert(sizeof(CRITICAL_SECTION) <= kStorageBytes);
    static_assert(alignof(CRITICAL_SECTION) <= alignof(CriticalSection));
    ::InitializeCriticalSection(::new (_storage) CRITICAL_SECTION);
}

CriticalSection::~CriticalSection() {
    ::DeleteCriticalSection(section(_storage));
}

void CriticalSection::lock() noexcept {
    ::EnterCriticalSection(section(_storage));
}

void CriticalSection::unlock() noexcept {
    ::LeaveCriticalSection(section(_storage));
}

}  // namespace platform
