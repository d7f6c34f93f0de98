#pragma once

#include "platform/native_handle.h"
#include "platform/pipe.h"
#include "platform/simulated/case_insensitive.h"
#include "platform/simulated/spin_lock.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

// The server side of every named pipe. A name may be given with or without "\\.\pipe\". Any thread
// may call.
class Pipes {
public:
    // From now on the pipe takes clients.
    void create(std::wstring_view name);
    // One write of the server: a read never returns bytes of two writes. Empty `bytes` are an empty
    // pipe message. Creates the pipe if it does not exist.
    void feed(std::wstring_view name, std::string_view bytes);
    // What was fed before can still be read; then reads fail with `error`. Writes fail at once.
    void close(std::wstring_view name, std::uint32_t error = kBrokenPipe);
    // No read returns more than `bytes`; 0 takes the limit away.
    void limitReads(std::wstring_view name, std::uint32_t bytes);

    // What clients wrote: each write is one element.
    [[nodiscard]] std::vector<std::string> writes(std::wstring_view name) const;
    [[nodiscard]] bool isOpened(std::wstring_view name) const;
    [[nodiscard]] bool isInMessageMode(std::wstring_view name) const;
    // How many of the fed bytes are not read yet: 0 when the reader has read everything.
    [[nodiscard]] std::size_t unread(std::wstring_view name) const;
    // How many reads found nothing and wait. A test that needs a blocked reader waits until this
    // is 1.
    [[nodiscard]] int waitingReaders() const noexcept;
    void reset();

    // For the simulated services.
    [[nodiscard]] bool exists(std::wstring_view path) const noexcept;
    [[nodiscard]] NativeHandle open(std::wstring_view path) noexcept;
    void setMessageMode(NativeHandle pipe) noexcept;
    [[nodiscard]] bool tryRead(NativeHandle pipe, void* to, std::uint32_t count,
                               PipeRead& result) noexcept;
    // Whether a read would end at once.
    [[nodiscard]] bool canRead(NativeHandle pipe) noexcept;
    [[nodiscard]] bool write(NativeHandle pipe, const void* from, std::uint32_t count) noexcept;
    void countWaiting(int change) noexcept;

private:
    struct Pipe {
        int id = 0;  // makes the handle; never used twice, so that a stale handle is noticed
        std::list<std::string> fed;
        std::size_t readOfFront = 0;  // bytes of the first element that were read already
        std::uint32_t readLimit = 0;
        bool isClosed = false;
        std::uint32_t closeError = kBrokenPipe;
        bool isOpened = false;
        bool isInMessageMode = false;
        std::vector<std::string> writes;
    };
    using Map = std::map<std::wstring, Pipe, CaseInsensitive>;

    [[nodiscard]] Pipe& made(std::wstring_view name);
    [[nodiscard]] const Pipe* find(std::wstring_view name) const noexcept;
    [[nodiscard]] Pipe* find(NativeHandle handle) noexcept;

    mutable SpinLock _lock;
    Map _pipes;
    int _lastId = 0;
    int _waiting = 0;
};

}  // namespace platform::simulated
