#pragma once

#include <windows.h>
#include <memory>
#include <type_traits>

// A device context that draws into a bitmap, and its owner.
struct DeleteMemoryDc {
    void operator()(HDC dc) const noexcept { ::DeleteDC(dc); }
};
using MemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteMemoryDc>;
