#include "platform/simulated/pipes.h"

#include "platform/simulated/memory_check.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace platform::simulated {
namespace {

constexpr std::wstring_view kPrefix = L"\\\\.\\pipe\\";

std::wstring_view bareName(std::wstring_view name) noexcept {
    return name.starts_with(kPrefix) ? name.substr(kPrefix.size()) : name;
}

NativeHandle handleOf(int id) noexcept {
    constexpr std::intptr_t kStep = 4;  // handles of the system are multiples of four
    return reinterpret_cast<NativeHandle>(id * kStep);
}

}  // namespace

Pipes::Pipe& Pipes::made(std::wstring_view name) {
    Pipe& pipe = _pipes[std::wstring(bareName(name))];
    if (pipe.id == 0) pipe.id = ++_lastId;
    return pipe;
}

const Pipes::Pipe* Pipes::find(std::wstring_view name) const noexcept {
    const auto found = _pipes.find(bareName(name));
    return found != _pipes.end() ? &found->second : nullptr;
}

Pipes::Pipe* Pipes::find(NativeHandle handle) noexcept {
    for (auto& [name, pipe] : _pipes) {
        if (pipe.isOpened && handleOf(pipe.id) == handle) return &pipe;
    }
    return nullptr;
}

void Pipes::create(std::wstring_view name) {
    const SpinScope scope(_lock);
    static_cast<void>(made(name));
}

void Pipes::feed(std::wstring_view name, std::string_view bytes) {
    const SpinScope scope(_lock);
    made(name).fed.emplace_back(bytes);
}

void Pipes::close(std::wstring_view name, std::uint32_t error) {
    const SpinScope scope(_lock);
    Pipe& pipe = made(name);
    pipe.isClosed = true;
    pipe.closeError = error;
}

void Pipes::limitReads(std::wstring_view name, std::uint32_t bytes) {
    const SpinScope scope(_lock);
    made(name).readLimit = bytes;
}

std::vector<std::string> Pipes::writes(std::wstring_view name) const {
    const SpinScope scope(_lock);
    const Pipe* const pipe = find(name);
    return pipe != nullptr ? pipe->writes : std::vector<std::string>();
}

bool Pipes::isOpened(std::wstring_view name) const {
    const SpinScope scope(_lock);
    const Pipe* const pipe = find(name);
    return pipe != nullptr && pipe->isOpened;
}

bool Pipes::isInMessageMode(std::wstring_view name) const {
    const SpinScope scope(_lock);
    const Pipe* const pipe = find(name);
    return pipe != nullptr && pipe->isInMessageMode;
}

std::size_t Pipes::unread(std::wstring_view name) const {
    const SpinScope scope(_lock);
    const Pipe* const pipe = find(name);
    if (pipe == nullptr) return 0;
    std::size_t bytes = 0;
    for (const std::string& message : pipe->fed)
        bytes += message.size();
    return bytes - pipe->readOfFront;
}

int Pipes::waitingReaders() const noexcept {
    const SpinScope scope(_lock);
    return _waiting;
}

void Pipes::reset() {
    Map gone;
    const SpinScope scope(_lock);
    gone.swap(_pipes);
}

bool Pipes::exists(std::wstring_view path) const noexcept {
    const SpinScope scope(_lock);
    const Pipe* const pipe = path.starts_with(kPrefix) ? find(path) : nullptr;
    return pipe != nullptr && !pipe->isOpened;
}

NativeHandle Pipes::open(std::wstring_view path) noexcept {
    const SpinScope scope(_lock);
    const auto found = path.starts_with(kPrefix) ? _pipes.find(bareName(path)) : _pipes.end();
    if (found == _pipes.end() || found->second.isOpened) return invalidHandle();
    found->second.isOpened = true;
    return handleOf(found->second.id);
}

void Pipes::setMessageMode(NativeHandle pipe) noexcept {
    const SpinScope scope(_lock);
    if (Pipe* const opened = find(pipe)) opened->isInMessageMode = true;
}

bool Pipes::tryRead(NativeHandle pipe, void* to, std::uint32_t count, PipeRead& result) noexcept {
    const SpinScope scope(_lock);
    Pipe* const opened = find(pipe);
    if (opened == nullptr) {
        result = {true, 0, kInvalidHandleError};
        return true;
    }
    if (opened->fed.empty()) {
        if (opened->isClosed) result = {true, 0, opened->closeError};
        return opened->isClosed;
    }
    const std::string& front = opened->fed.front();
    std::size_t bytes = std::min<std::size_t>(count, front.size() - opened->readOfFront);
    if (opened->readLimit != 0) bytes = std::min<std::size_t>(bytes, opened->readLimit);
    if (bytes != 0) std::memcpy(to, front.data() + opened->readOfFront, bytes);
    opened->readOfFront += bytes;
    if (opened->readOfFront == front.size()) {
        opened->fed.pop_front();
        opened->readOfFront = 0;
    }
    result = {false, static_cast<std::uint32_t>(bytes), kSuccess};
    return true;
}

bool Pipes::canRead(NativeHandle pipe) noexcept {
    const SpinScope scope(_lock);
    const Pipe* const opened = find(pipe);
    return opened == nullptr || opened->isClosed || !opened->fed.empty();
}

bool Pipes::write(NativeHandle pipe, const void* from, std::uint32_t count) noexcept {
    checkDefined(from, count);
    const SpinScope scope(_lock);
    Pipe* const opened = find(pipe);
    if (opened == nullptr || opened->isClosed) return false;
    try {
        opened->writes.emplace_back(static_cast<const char*>(from), count);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void Pipes::countWaiting(int change) noexcept {
    const SpinScope scope(_lock);
    _waiting += change;
}

}  // namespace platform::simulated
