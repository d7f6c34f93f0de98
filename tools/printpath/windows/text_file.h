#pragma once

#include <filesystem>
#include <string>

namespace printpath {

// The bytes of a file; empty when it cannot be read. Others may be writing to it.
std::string readWholeFile(const std::filesystem::path& file);
bool readWholeFile(const std::filesystem::path& file, std::string& bytes);
// Makes the folders of the path. Throws Failure when it cannot be written.
void writeWholeFile(const std::filesystem::path& file, const std::string& bytes);

// The same path for use in a UTF-8 message.
std::string pathText(const std::filesystem::path& file);

}  // namespace printpath
