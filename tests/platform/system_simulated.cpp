#include "system.h"

#include "platform/simulated/world.h"

namespace contract {

using platform::simulated::world;

struct PipeServer::State {
    std::wstring name;
};

PipeServer::PipeServer(std::wstring_view name, Kind)
    : _state(std::make_unique<State>(State{std::wstring(name)})) {
    world().pipes.create(name);
}

PipeServer::~PipeServer() {
    close();
}

std::wstring PipeServer::path() const {
    return L"\\\\.\\pipe\\" + _state->name;
}

void PipeServer::write(std::string_view message) {
    world().pipes.feed(_state->name, message);
}

std::string PipeServer::received(std::size_t bytes) {
    std::string all;
    for (const std::string& write : world().pipes.writes(_state->name))
        all += write;
    return all.substr(0, bytes);
}

void PipeServer::close() {
    world().pipes.close(_state->name);
}

void addPrinter(const wchar_t* name, const wchar_t* value, std::string_view bytes) {
    world().printers.set(name, value, bytes);
}

std::string temporaryFolder() {
    return "C:\\Temp";
}

void provideTexts() {
    auto& texts = world().texts;
    const auto library = texts.addModule(kTextLibrary);
    texts.add(library, 0x0409, 300, L"Ready");
    texts.add(library, 0x0409, 301, L"Toner low");
    texts.add(library, 0x0409, 303, L"Last of its block");
    texts.add(library, 0x0409, 304, L"First of the next");
    texts.add(library, 0x0407, 300, L"Gr\u00f6\u00dfe 4");
}

const wchar_t* knownLibrary() {
    world().device.install();
    return L"rtqewsi.dll";
}

const char* knownFunction() {
    return "GetPage";
}

void postMessage(std::function<void()> procedure) {
    world().messages.post(std::move(procedure));
}

void postQuit() {
    world().messages.postQuit();
}

}  // namespace contract
