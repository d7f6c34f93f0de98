#pragma once

#include "platform/native_handle.h"

#include <cstdint>
#include <string>

// What the desktop shell opens for us. No call waits for the opened program, which runs by itself.
// Any thread may call.
namespace platform {

// Opens an address in the user's browser; the shell gets it as shellArgument() makes it. False when
// the shell refuses or memory ends.
bool openAddress(const wchar_t* url) noexcept;

// Starts a program file with its default verb, in its normal window. `error` gets the system's
// error number on failure.
bool startProgram(const wchar_t* path, std::uint32_t& error) noexcept;

// Opens a document (narrow path) with the program that the user has for it. False when there is no
// such document or program; the user is not told.
bool openDocument(const char* path) noexcept;

enum class Folder { ProgramFiles, CommonApplicationData };

// Path of a folder of the system, without a trailing separator. False when the system has none;
// `path` is then untouched.
[[nodiscard]] bool folderPath(Folder folder, std::string& path);

}  // namespace platform
