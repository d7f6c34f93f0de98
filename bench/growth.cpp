// How the cost of the framework grows with the size of what it handles: bench/growth.sh counts the
// instructions between measureFrom() and measureTo() of each point and prints the table.
//
// usage: growth count|memory [sample]
//
// All sizes of every series, or with "sample" the two that show how it grows. The heap is asked
// only with "memory", because that takes time.
#include "arbor/message.h"
#include "arbor/property_holder.h"
#include "bench/memory_generator.h"
#include "bench/silent_manager.h"
#include "platform/simulated/world.h"
#include "platform/thread.h"
#include "tern/abstract_listener.h"
#include "tern/channel_settings.h"
#include "tern/class_ids.h"
#include "tern/event_broker.h"
#include "tern/message_keys.h"
#include "tern/timer_event_generator.h"
#include "tern/velo_record.h"

#include <malloc.h>
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

// The counter of instructions starts and stops where these are called. They are never inlined, and
// the compiler must not see that they do nothing.
extern "C" {
[[gnu::noinline]] void measureFrom() {
    asm volatile("");
}
[[gnu::noinline]] void measureTo() {
    asm volatile("");
}
}

namespace {

constexpr std::uint32_t kStatusClass = 2;
const arbor::Guid* const kType = &tern::kVeloEventGeneratorId;

bool asksTheHeap = false;

std::size_t heapBytes() {
    if (!asksTheHeap) return 0;
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

// Ends the loop when it has heard as many messages as it expects.
class CountingListener : public tern::AbstractListener {
public:
    CountingListener(tern::EventBroker& broker, long expected)
        : _broker(broker), _expected(expected) {}

    [[nodiscard]] const arbor::Guid* getClassId() const override { return &tern::kDebugListenerId; }
    bool notify(arbor::IMessage*) override {
        if (++_heard == _expected) _broker.stop(nullptr, 0);
        return false;
    }

private:
    tern::EventBroker& _broker;
    long _expected;
    long _heard = 0;
};

void enqueueStatus(tern::EventBroker& broker) {
    auto message = std::make_shared<arbor::Message>(kType, kStatusClass, 0);
    message->getProperties()->setInt(tern::message_key::kSubcode, 3);
    message->getProperties()->setInt(tern::message_key::kStatus, 41150);
    broker.enqueue(std::move(message));
}

// One message for so many listeners.
std::size_t listeners(long size) {
    const std::size_t before = heapBytes();
    bench::SilentManager manager;
    tern::EventBroker broker(&manager);
    for (long i = 0; i < size; ++i)
        broker.addComponent(new CountingListener(broker, 1));
    measureFrom();
    enqueueStatus(broker);
    broker.run();
    measureTo();
    return heapBytes() - before;
}

// A bag with so many keys: each is set, read and destroyed with the bag.
std::size_t keys(long size) {
    std::vector<std::wstring> names;
    for (long i = 0; i < size; ++i)
        names.push_back(L"key" + std::to_wstring(i * 7919 % size));
    const std::size_t before = heapBytes();
    std::size_t bytes = 0;
    measureFrom();
    {
        arbor::PropertyHolder bag;
        for (const std::wstring& name : names)
            bag.setInt(name.c_str(), 1);
        for (const std::wstring& name : names)
            bag.getInt(name.c_str(), 0);
        bytes = heapBytes() - before + sizeof bag;
    }
    measureTo();
    return bytes;
}

// So many messages that wait when the loop comes to them.
std::size_t queue(long size) {
    bench::SilentManager manager;
    tern::EventBroker broker(&manager);
    broker.addComponent(new CountingListener(broker, size));
    const std::size_t before = heapBytes();
    measureFrom();
    for (long i = 0; i < size; ++i)
        enqueueStatus(broker);
    const std::size_t bytes = heapBytes() - before;
    broker.run();
    measureTo();
    return bytes;
}

// A document whose wide name fills a body of so many bytes.
std::string documentOf(long bodyBytes) {
    constexpr long kUnitBytes = 2;
    const auto header = tern::encodedHeader(
        {tern::kVeloMagic, 0, tern::kDocumentStartWide, 0, static_cast<std::uint32_t>(bodyBytes)});
    std::string record(header.begin(), header.end());
    if (bodyBytes == 0) return record;
    record.append(sizeof(std::uint32_t), '\0');
    for (long left = bodyBytes - 2 * kUnitBytes; left > kUnitBytes; left -= kUnitBytes)
        record += std::string_view("n\0", kUnitBytes);
    return record.append(kUnitBytes, '\0');
}

// Ends the measurement when the message of a record has come and gone.
class LastBroker : public tern::EventBroker {
public:
    LastBroker() : EventBroker(nullptr) {}

    bool enqueue(tern::MessageReference message) override {
        bytes = heapBytes() - before;
        message.reset();
        measureTo();
        return true;
    }

    std::size_t before = 0;
    std::size_t bytes = 0;
};

// A record with a body of so many bytes, from its first byte to the end of its message.
std::size_t body(long size) {
    platform::simulated::world().reset();
    platform::simulated::world().pipes.create(L"growth");
    constexpr std::wstring_view kPipe = L"growth";
    tern::ChannelSettings& settings = tern::channelSettings();
    settings.inputPipe.fill(L'\0');
    std::copy(kPipe.begin(), kPipe.end(), settings.inputPipe.begin());
    settings.printerId = 0;

    LastBroker broker;
    bench::SilentManager manager(&broker);
    arbor::PropertyHolder parameters;
    bench::MemoryGenerator generator(bench::Tape(documentOf(size), 1), parameters, &manager);
    broker.before = heapBytes();
    measureFrom();
    generator.runOnThisThread();
    return broker.bytes;
}

// So many timers that are made and started, one tick of each, and their end. The ticks are posted
// by the loop, because how often a timer ticks depends on the time.
std::size_t timers(long size) {
    const std::size_t before = heapBytes();
    std::size_t bytes = 0;
    bench::SilentManager manager;
    measureFrom();
    {
        tern::EventBroker broker(&manager);
        manager.owns(&broker);
        arbor::PropertyHolder parameters;
        parameters.setPointer(L"threadControl", static_cast<arbor::IListener*>(&broker));
        parameters.setInt(L"interval", tern::TimerEventGenerator::kLongestIntervalMs);
        broker.addComponent(new CountingListener(broker, size));
        for (long i = 0; i < size; ++i)
            broker.addComponent(new tern::TimerEventGenerator(parameters, &manager));
        manager.pumpsWith([&] {
            for (long i = 0; i < size; ++i) {
                broker.post(&tern::kTimerEventGeneratorId, tern::TimerEventGenerator::kTickCode, 0,
                            nullptr);
            }
        });
        broker.run();
        bytes = heapBytes() - before;
    }
    measureTo();
    return bytes;
}

struct Series {
    const char* name;
    std::size_t (*measure)(long size);  // returns the bytes of the heap that so many take
    std::vector<long> sizes;
    std::vector<long> sample;
};

const Series kSeries[] = {
    {"listeners", &listeners, {1, 10, 100, 1000}, {100, 1000}},
    {"keys", &keys, {4, 16, 64, 256, 1024}, {256, 1024}},
    {"queue", &queue, {100, 1000, 10000, 100000, 1000000}, {1000, 10000}},
    {"body", &body, {0, 1024, 16384, 65536, 262144, 1048576}, {65536, 1048576}},
    {"timers", &timers, {1, 10, 100, 1000}, {100, 1000}},
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    asksTheHeap = std::string_view(argv[1]) == "memory";
    const bool sample = argc > 2;
    for (const Series& series : kSeries) {
        for (const long size : sample ? series.sample : series.sizes) {
            // Otherwise an allocation of this point would tidy up what the point before has freed.
            malloc_trim(0);
            std::printf("%s %ld %zu\n", series.name, size, series.measure(size));
        }
    }
    return 0;
}
