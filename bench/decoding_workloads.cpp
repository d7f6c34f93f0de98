#include "arbor/i_message.h"
#include "arbor/property_holder.h"
#include "arbor/property_text.h"
#include "bench/checksum.h"
#include "bench/document_records.h"
#include "bench/memory_generator.h"
#include "bench/plain_decoder.h"
#include "bench/silent_manager.h"
#include "bench/workloads.h"
#include "platform/lock.h"
#include "platform/simulated/world.h"
#include "tern/channel_settings.h"
#include "tern/event_broker.h"
#include "tern/velo_event_generator.h"

#include <algorithm>

namespace bench {

namespace {

constexpr wchar_t kPipe[] = L"benchmark";
constexpr wchar_t kPipePath[] = L"\\\\.\\pipe\\benchmark";
// Only the first document is read back field by field, or the checksum would cost more than the
// decoding that is measured.
constexpr std::uint64_t kCheckedMessages = 10;

std::uint64_t allOf(const arbor::IPropertyHolder& bag) {
    std::uint64_t sum = of(bag.getInt(L"severity", 1)) + of(bag.getInt(L"status", 2)) +
                        of(bag.getInt(L"jobID", 3)) + of(bag.getInt(L"blackSN", 4)) +
                        of(bag.getInt(L"oembufferSize", 5)) + of(bag.getString(L"mediaType", "A"));
    for (const wchar_t* key : {L"portName", L"printerName", L"docName"})
        sum += of(arbor::wideText(bag, key));
    const auto* block = static_cast<const char*>(bag.getPointer(L"oemMessages", nullptr));
    return sum + (block != nullptr ? of(std::string_view(block, 1)) : 0);
}

std::uint64_t allOf(const plain::Bag& bag) {
    using plain::get;
    std::uint64_t sum = of(get(bag, L"severity", 1)) + of(get(bag, L"status", 2)) +
                        of(get(bag, L"jobID", 3)) + of(get(bag, L"blackSN", 4)) +
                        of(get(bag, L"oembufferSize", 5)) +
                        of(get(bag, L"mediaType", std::string("A")));
    for (const wchar_t* key : {L"portName", L"printerName", L"docName"}) {
        sum += of(get(bag, key, std::string())) + of(get(bag, key, std::wstring()));
    }
    const auto* block = static_cast<const char*>(get<void*>(bag, L"oemMessages", nullptr));
    return sum + (block != nullptr ? of(std::string_view(block, 1)) : 0);
}

// Takes the decoded messages and computes the checksum.
class Sink {
public:
    template <typename Bag>
    void take(std::uint32_t code, std::int32_t subcode, const Bag& bag) {
        _sum += code + of(subcode);
        if (_messages++ < kCheckedMessages) _sum += allOf(bag);
    }
    [[nodiscard]] std::uint64_t sum() const noexcept { return _sum; }

private:
    std::uint64_t _sum = 0;
    std::uint64_t _messages = 0;
};

class SinkBroker : public tern::EventBroker {
public:
    SinkBroker() : EventBroker(nullptr) {}

    bool enqueue(tern::MessageReference message) override {
        const arbor::IPropertyHolder& bag = *message->getProperties();
        sink.take(message->getCode(), bag.getInt(L"subcode", -1), bag);
        return true;
    }

    Sink sink;
};

struct TakeMessage {
    void operator()(plain::MessagePointer message) const {
        const plain::Bag& bag = message->properties;
        sink.take(message->code, plain::get(bag, L"subcode", -1), bag);
    }
    Sink& sink;
};

void openChannel() {
    platform::simulated::world().reset();
    platform::simulated::world().pipes.create(kPipe);
    tern::ChannelSettings& settings = tern::channelSettings();
    std::copy(std::begin(kPipe), std::end(kPipe), settings.inputPipe.begin());
    settings.printerId = static_cast<std::int32_t>(kPrinterId);
}

void feedPipe(long times) {
    openChannel();
    const std::string records = documentRecords();
    for (long i = 0; i < times; ++i)
        platform::simulated::world().pipes.feed(kPipe, records);
    platform::simulated::world().pipes.close(kPipe);
}

template <typename Generator, typename Run, typename... Arguments>
std::uint64_t decodedBy(Run run, Arguments... arguments) {
    SinkBroker broker;
    SilentManager manager(&broker);
    arbor::PropertyHolder parameters;
    Generator generator(arguments..., parameters, &manager);
    run(generator);
    return broker.sink.sum();
}

void runHere(MemoryGenerator& generator) {
    generator.runOnThisThread();
}

// A read of the pipe may block, so it must run on the generator's own thread.
void runOnItsThread(tern::VeloEventGenerator& generator) {
    generator.start();
    generator.wait(platform::kNoTimeout);
}

template <typename Read>
std::uint64_t decodedPlainly(Read read) {
    Sink sink;
    plain::Decoder decoder(kPrinterId, std::move(read), TakeMessage{sink});
    decoder.run();
    return sink.sum();
}

}  // namespace

std::uint64_t memoryDecodingFramework(long times) {
    openChannel();
    return decodedBy<MemoryGenerator>(&runHere, Tape(documentRecords(), times));
}

std::uint64_t memoryDecodingReference(long times) {
    openChannel();
    return decodedPlainly(
        [tape = Tape(documentRecords(), times)](void* to, std::size_t bytes) mutable {
            return tape.read(to, static_cast<std::uint32_t>(bytes));
        });
}

std::uint64_t pipeDecodingFramework(long times) {
    feedPipe(times);
    return decodedBy<tern::VeloEventGenerator>(&runOnItsThread);
}

std::uint64_t pipeDecodingReference(long times) {
    feedPipe(times);
    const platform::NativeHandle pipe = platform::openPipeForReading(kPipePath);
    return decodedPlainly([pipe](unsigned char* to, std::size_t bytes) {
        for (std::size_t got = 0; got < bytes;) {
            const auto read =
                platform::readPipe(pipe, to + got, static_cast<std::uint32_t>(bytes - got));
            if (read.failed) return false;
            got += read.bytes;
        }
        return true;
    });
}

}  // namespace bench
