#pragma once

#include "platform/native_handle.h"

#include <cstdint>

namespace platform {

// Loads the spooler's library, so that the first question to the spooler need not wait for it. Does
// not ask the spooler itself. Any thread may call.
void prepareSpooler() noexcept;

// A printer opened at the spooler without defaults, closed by the destructor and by the next open.
// One thread at a time; each call may wait for the spooler's process.
class Printer {
public:
    Printer() noexcept = default;
    ~Printer();
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    // False when the spooler does not know the printer or does not answer.
    [[nodiscard]] bool open(const wchar_t* name) noexcept;

    // Reads a value of the driver's printer data. Returns the system's error number, 0 for success;
    // at most `capacity` bytes are written to `to` on success.
    [[nodiscard]] std::uint32_t readData(const wchar_t* value, void* to,
                                         std::uint32_t capacity) noexcept;
    // Reads a value below a key of the printer's data in the same way; "\" is the root key.
    [[nodiscard]] std::uint32_t readDataOf(const wchar_t* key, const wchar_t* value, void* to,
                                           std::uint32_t capacity) noexcept;

private:
    NativeHandle _printer = nullptr;  // owned
};

}  // namespace platform
