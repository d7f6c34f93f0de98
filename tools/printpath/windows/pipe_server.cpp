#include "tools/printpath/windows/pipe_server.h"

#include "tools/printpath/windows/failure.h"

namespace printpath {

namespace {

constexpr DWORD kBufferBytes = 65536;
constexpr DWORD kGraceMs = 2000;  // time in which a cancelled call returns

std::string withError(const std::string& what, DWORD error) {
    return what + " (system error " + std::to_string(error) + ")";
}

DWORD WINAPI flush(void* pipe) {
    ::FlushFileBuffers(pipe);
    return 0;
}

}  // namespace

PipeServer::PipeServer(const std::wstring& name, bool byteMode)
    : _event(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    const std::wstring path = L"\\\\.\\pipe\\" + name;
    // PIPE_WAIT, the blocking mode, has the value 0 and so does not appear here.
    const DWORD mode = byteMode ? DWORD{PIPE_TYPE_BYTE} : DWORD{PIPE_TYPE_MESSAGE};
    _pipe = fileHandle(::CreateNamedPipeW(path.c_str(), PIPE_ACCESS_OUTBOUND | FILE_FLAG_OVERLAPPED,
                                          mode, 1, kBufferBytes, 0, 0, nullptr));
    const DWORD error = ::GetLastError();
    if (!_pipe) throw Failure(withError("the pipe could not be made", error), Outcome::Unusable);
    _connecting.hEvent = _event.get();
    _connected = ::ConnectNamedPipe(_pipe.get(), &_connecting) != 0 ||
                 ::GetLastError() == ERROR_PIPE_CONNECTED;
}

PipeServer::~PipeServer() {
    if (_connected) return;
    ::CancelIoEx(_pipe.get(), &_connecting);
    DWORD bytes = 0;
    ::GetOverlappedResult(_pipe.get(), &_connecting, &bytes, TRUE);
}

bool PipeServer::connected() {
    DWORD bytes = 0;
    if (!_connected) _connected = ::GetOverlappedResult(_pipe.get(), &_connecting, &bytes, FALSE);
    return _connected;
}

void PipeServer::write(const std::string& bytes, DWORD timeoutMs) {
    const Handle done(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    OVERLAPPED writing{};
    writing.hEvent = done.get();
    DWORD written = 0;
    BOOL ok = ::WriteFile(_pipe.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                          &writing);
    DWORD error = ok ? ERROR_SUCCESS : ::GetLastError();
    if (!ok && error == ERROR_IO_PENDING) {
        const bool inTime = ::WaitForSingleObject(done.get(), timeoutMs) == WAIT_OBJECT_0;
        if (!inTime) ::CancelIoEx(_pipe.get(), &writing);
        ok = ::GetOverlappedResult(_pipe.get(), &writing, &written, TRUE);
        error = ok ? ERROR_SUCCESS : ::GetLastError();
        if (!inTime && !ok)
            throw Failure("the monitor does not read its pipe: " + std::to_string(bytes.size()) +
                              " bytes could not be written in " + std::to_string(timeoutMs) + " ms",
                          Outcome::Hung);
    }
    if (!ok) throw Failure(withError("the pipe could not be written", error));
}

bool PipeServer::drain(DWORD timeoutMs) {
    const Handle thread(::CreateThread(nullptr, 0, flush, _pipe.get(), 0, nullptr));
    if (!thread) return false;
    if (::WaitForSingleObject(thread.get(), timeoutMs) == WAIT_OBJECT_0) return true;
    ::CancelSynchronousIo(thread.get());
    ::CancelIoEx(_pipe.get(), nullptr);
    ::WaitForSingleObject(thread.get(), kGraceMs);
    return false;
}

}  // namespace printpath
