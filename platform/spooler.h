#pragma once

#include "platform/native_handle.h"

#include <cstdint>

namespace platform {

// Loads what the first question to the spooler needs, so that whoever asks it need not wait. Asks
// the spooler nothing. Any thread may call.
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

    // Printer data value of the driver. Returns the system's error number, 0 for success; up to
    // `capacity` bytes are written to `to` on success.
    [[nodiscard]] std::uint32_t readData(const wchar_t* value, void* to,
                                         std::uint32_t capacity) noexcept;
    // The same below a key of the printer's data; "\" is the root.
    [[nodiscard]] std::uint32_t readDataOf(const wchar_t* key, const wchar_t* value, void* to,
                                           std::uint32_t capacity) noexcept;

private:
    NativeHandle _printer = nullptr;  // owned
};

}  // namespace platform
