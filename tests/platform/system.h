#pragma once

#include "platform/native_handle.h"
#include "platform/resource_text.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

// What the tests of the platform need from the system, for both implementations: the server of a
// pipe, a printer of the spooler, a message in the queue.
namespace contract {

// The server end of a pipe. The destructor closes it.
class PipeServer {
public:
    enum class Kind { Message, Byte };

    explicit PipeServer(std::wstring_view name, Kind kind = Kind::Message);
    ~PipeServer();
    PipeServer(const PipeServer&) = delete;
    PipeServer& operator=(const PipeServer&) = delete;

    [[nodiscard]] std::wstring path() const;
    void write(std::string_view message);
    // The first bytes that a client wrote, at most `bytes` of them.
    [[nodiscard]] std::string received(std::size_t bytes);
    // The client can still read what was written, and then finds a broken pipe.
    void close();

private:
    struct State;
    std::unique_ptr<State> _state;
};

// A printer of the spooler with one value of its driver's data.
void addPrinter(const wchar_t* name, const wchar_t* value, std::string_view bytes);

// A folder for files of this test program, without a separator at its end.
[[nodiscard]] std::string temporaryFolder();

// On Windows this library is made of contract_texts.rc. On the simulated platform provideTexts()
// makes a library with the same texts.
inline constexpr wchar_t kTextLibrary[] = L"contract_texts.dll";
void provideTexts();

// A library that exists everywhere, and one of its functions.
[[nodiscard]] const wchar_t* knownLibrary();
[[nodiscard]] const char* knownFunction();

// Messages for the calling thread; `procedure` runs when the message is dispatched.
void postMessage(std::function<void()> procedure);
void postQuit();

}  // namespace contract
