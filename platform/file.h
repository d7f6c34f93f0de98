#pragma once

#include <string>
#include <string_view>

// Whole files by a path in the ANSI code page. False on any failure of the system; std::bad_alloc
// is the only exception. Any thread may call.
namespace platform {

// Overwrites `to`. What a failed copy leaves there is not defined.
[[nodiscard]] bool copyFile(const char* from, const char* to) noexcept;

// The bytes as they stand in the file. `bytes` is untouched on failure.
[[nodiscard]] bool readFile(const char* path, std::string& bytes);

// Replaces the content of the file, which is made if it is missing. After a failure the file may
// hold a part of the bytes.
[[nodiscard]] bool writeFile(const char* path, std::string_view bytes) noexcept;

}  // namespace platform
