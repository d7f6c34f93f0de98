#pragma once

#include <string>
#include <string_view>

// Whole files by narrow path. False on any failure, bad_alloc only from memory.
namespace platform {

// Overwrites `to`.
[[nodiscard]] bool copyFile(const char* from, const char* to) noexcept;

// The bytes as they stand in the file. `bytes` is untouched on failure.
[[nodiscard]] bool readFile(const char* path, std::string& bytes);

// Replaces the content of the file.
[[nodiscard]] bool writeFile(const char* path, std::string_view bytes) noexcept;

}  // namespace platform
