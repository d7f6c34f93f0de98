// A print path that sends any bytes in any pieces. The first byte is the largest count that one
// read returns, the second the size of a pipe message; 0 is no limit. The rest is the stream. It is
// cut into a few dozen pieces at most, because hundreds of equal pieces are slow and do not reach
// other code.
#include "platform/simulated/world.h"
#include "platform/text.h"
#include "tern/abstract_instance_manager.h"
#include "tern/channel_settings.h"
#include "tern/database.h"
#include "tern/event_broker.h"
#include "tern/velo_event_generator.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/result_notes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using platform::simulated::world;

constexpr std::size_t kMostPieces = 32;

// Reads every value of a message, as a listener does, and then drops the message.
class ReadingBroker : public tern::EventBroker {
public:
    using EventBroker::EventBroker;

    bool enqueue(tern::MessageReference message) override {
        const arbor::IPropertyHolder& bag = *message->getProperties();
        for (const wchar_t* key : {L"subcode", L"portName", L"printerName", L"jobID", L"docName",
                                   L"severity", L"status", L"blackSN", L"mediaType"}) {
            const std::string value = bag.getString(key, "");
            note(kKeepsNotes ? platform::narrowed(key) : std::string(), value);
            _read += value.size();
        }
        const auto bytes = static_cast<std::size_t>(bag.getInt(L"oembufferSize", 0));
        const void* block = bag.getPointer(L"oemMessages", nullptr);
        if (bytes > tern::kVeloBodyLimit) std::abort();
        note("oem", std::string_view(static_cast<const char*>(block), bytes));
        if (bytes != 0 && std::memchr(block, 0, bytes) != nullptr) ++_read;
        return true;
    }
    bool stop(const arbor::Guid*, std::uint32_t) override {
        ++stops;
        return true;
    }
    int stops = 0;

private:
    std::size_t _read = 0;
};

class Manager : public tern::AbstractInstanceManager {
public:
    Manager() : broker(this), _database(this) { attach(&_database, &broker); }
    ReadingBroker broker;

private:
    tern::Database _database;
};

class Generator : public tern::VeloEventGenerator {
public:
    using VeloEventGenerator::VeloEventGenerator;
    ~Generator() override { endThreadUse(); }
    using AbstractThread::runOnThisThread;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::size_t leastPiece = size / kMostPieces;
    const auto pieceBytes = [&input, size, leastPiece]() -> std::size_t {
        const std::size_t wanted = input.byte();
        return wanted != 0 ? std::max(wanted, leastPiece) : size;
    };
    const std::size_t readLimit = pieceBytes();
    const std::size_t messageBytes = pieceBytes();

    world().pipes.reset();
    world().pipes.create(L"f");
    world().pipes.limitReads(L"f", static_cast<std::uint32_t>(readLimit));
    while (!input.empty())
        world().pipes.feed(L"f", input.text(messageBytes));
    world().pipes.close(L"f");

    auto& settings = tern::channelSettings();
    settings.inputPipe[0] = L'f';
    settings.printerId = 7;
    Manager manager;
    const arbor::PropertyHolder parameters{};
    Generator generator(parameters, &manager);
    generator.runOnThisThread();
    if (manager.broker.stops != 1) std::abort();  // the generator must stop the broker exactly once
    return 0;
}
