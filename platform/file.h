#pragma once

#include <string>
#include <string_view>

// Operations on whole files, named by a path in the ANSI code page. They return false when the
// system fails; std::bad_alloc is the only exception. Any thread may call.
namespace platform {

// Overwrites `to`. After a failure the content of `to` is not defined.
[[nodiscard]] bool copyFile(const char* from, const char* to) noexcept;

// Reads the bytes of the file without any conversion. `bytes` is untouched on failure.
[[nodiscard]] bool readFile(const char* path, std::string& bytes);

// Replaces the content of the file, or creates the file. After a failure the file may hold a part
// of the bytes.
[[nodiscard]] bool writeFile(const char* path, std::string_view bytes) noexcept;

}  // namespace platform
