#pragma once

#include "tools/printpath/windows/handle.h"

#include <string>

namespace printpath {

// The print path's end of the status pipe: one instance, written here, read by the monitor. Every
// operation has a time limit and throws Failure when something goes wrong.
class PipeServer {
public:
    // `name` is what follows \\.\pipe\ in the path.
    PipeServer(const std::wstring& name, bool byteMode);
    ~PipeServer();
    PipeServer(const PipeServer&) = delete;
    PipeServer& operator=(const PipeServer&) = delete;

    // Whether the monitor has opened the pipe.
    bool connected();

    // Writes one message; in byte mode just the bytes.
    void write(const std::string& bytes, DWORD timeoutMs);

    // Waits until the reader has taken everything. False when it did not in time, true also when
    // the reader has gone.
    bool drain(DWORD timeoutMs);

private:
    Handle _pipe;
    Handle _event;
    OVERLAPPED _connecting{};
    bool _connected = false;
};

}  // namespace printpath
