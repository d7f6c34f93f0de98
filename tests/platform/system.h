#pragma once

#include "platform/native_handle.h"
#include "platform/resource_text.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

// What the contract tests need from the other side of the seam, for either implementation: the
// server of a pipe, the printer of a spooler, the message in a queue.
namespace contract {

// The server end of a message pipe, which ends with its object.
class PipeServer {
public:
    enum class Kind { Message, Byte };

    explicit PipeServer(std::wstring_view name, Kind kind = Kind::Message);
    ~PipeServer();
    PipeServer(const PipeServer&) = delete;
    PipeServer& operator=(const PipeServer&) = delete;

    [[nodiscard]] std::wstring path() const;
    void write(std::string_view message);
    // What a client wrote, up to `bytes`.
    [[nodiscard]] std::string received(std::size_t bytes);
    // What was written is still delivered, then the client reads a broken pipe.
    void close();

private:
    struct State;
    std::unique_ptr<State> _state;
};

// A printer of the spooler with one value of its driver's data.
void addPrinter(const wchar_t* name, const wchar_t* value, std::string_view bytes);

// A folder for files of this test program, without a separator at its end.
[[nodiscard]] std::string temporaryFolder();

// The library of contract_texts.rc, or its like.
inline constexpr wchar_t kTextLibrary[] = L"contract_texts.dll";
void provideTexts();

// A library that is there, with one of its functions.
[[nodiscard]] const wchar_t* knownLibrary();
[[nodiscard]] const char* knownFunction();

// Messages for the calling thread; `procedure` runs when the message is dispatched.
void postMessage(std::function<void()> procedure);
void postQuit();

}  // namespace contract
