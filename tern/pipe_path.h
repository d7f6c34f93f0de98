#pragma once

#include <cstddef>
#include <iterator>
#include <string>

namespace tern {

// What stands before the name in the path of a pipe of this machine.
inline constexpr wchar_t kPipePrefix[] = L"\\\\.\\pipe\\";

// Units of the longest name whose path has room in the 260 units of a system path, the prefix and
// the terminator included.
inline constexpr std::size_t kLongestPipeName = 260 - std::size(kPipePrefix);

// The path of the pipe, or nothing for a name that is too long: a cut path would be that of another
// pipe. Throws std::bad_alloc. Any thread.
[[nodiscard]] std::wstring pipePath(const std::wstring& name);

}  // namespace tern
