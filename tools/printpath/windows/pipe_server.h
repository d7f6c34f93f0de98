#pragma once

#include "tools/printpath/windows/handle.h"

#include <string>

namespace printpath {

// The print path's end of the status pipe, from which one monitor reads. Writing and draining have
// a time limit. An operation that fails throws Failure.
class PipeServer {
public:
    // `name` is what follows \\.\pipe\ in the path.
    PipeServer(const std::wstring& name, bool byteMode);
    ~PipeServer();
    PipeServer(const PipeServer&) = delete;
    PipeServer& operator=(const PipeServer&) = delete;

    // Whether the monitor has opened the pipe.
    bool connected();

    // Writes the bytes, in message mode as one message.
    void write(const std::string& bytes, DWORD timeoutMs);

    // Waits until the reader has read everything. False when it has not done so in time; true also
    // when the reader has closed the pipe.
    bool drain(DWORD timeoutMs);

private:
    Handle _pipe;
    Handle _event;
    OVERLAPPED _connecting{};
    bool _connected = false;
};

}  // namespace printpath
