#pragma once

#include <filesystem>
#include <string>

namespace printpath {

// The bytes of a file, also while another program writes to it. Empty when it cannot be read.
std::string readWholeFile(const std::filesystem::path& file);
bool readWholeFile(const std::filesystem::path& file, std::string& bytes);
// Writes the file and creates the folders of its path. Throws Failure when that fails.
void writeWholeFile(const std::filesystem::path& file, const std::string& bytes);

// The path in UTF-8, for messages.
std::string pathText(const std::filesystem::path& file);

}  // namespace printpath
