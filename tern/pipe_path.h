#pragma once

#include <string>

namespace tern {

// "\\.\pipe\" and the name, as far as the 260 characters of a path reach.
[[nodiscard]] std::wstring pipePath(const std::wstring& name);

}  // namespace tern
