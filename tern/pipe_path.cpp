#include "tern/pipe_path.h"

#include <cstddef>

namespace tern {

namespace {

constexpr std::size_t kPathUnits = 260;  // terminator included

}  // namespace

std::wstring pipePath(const std::wstring& name) {
    std::wstring path = L"\\\\.\\pipe\\" + name;
    if (path.size() >= kPathUnits) path.resize(kPathUnits - 1);
    return path;
}

}  // namespace tern
