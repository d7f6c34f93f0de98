#pragma once

#include "platform/native_handle.h"

#include <cstdint>
#include <string>

// Lets the desktop shell open things for the user. No call waits for the program that is started.
// Any thread may call.
namespace platform {

// Opens an address in the user's browser, after shellArgument() has made it safe for the shell.
// False when the shell refuses or memory runs out.
bool openAddress(const wchar_t* url) noexcept;

// Starts a program file with its default verb, in its normal window. `error` gets the system's
// error number on failure.
bool startProgram(const wchar_t* path, std::uint32_t& error) noexcept;

// Opens a document (narrow path) with the user's program for it. False when there is no such
// document or program; the shell then shows no message to the user.
bool openDocument(const char* path) noexcept;

enum class Folder { ProgramFiles, CommonApplicationData };

// The path of a folder of the system without a trailing separator. False when the system has no
// such folder; `path` is then untouched.
[[nodiscard]] bool folderPath(Folder folder, std::string& path);

}  // namespace platform
