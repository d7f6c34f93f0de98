#include "arbor/message.h"
#include "bench/checksum.h"
#include "bench/plain_broker.h"
#include "bench/silent_manager.h"
#include "bench/workloads.h"
#include "tern/abstract_listener.h"
#include "tern/class_ids.h"
#include "tern/event_broker.h"
#include "tern/message_keys.h"

#include <algorithm>
#include <memory>
#include <thread>

namespace bench {

namespace {

constexpr int kListeners = 3;
constexpr long kBatch = 16;  // messages that a producer posts before the loop runs again
constexpr std::uint32_t kStatusClass = 2;
constexpr std::int32_t kPaperOut = 41150;
const arbor::Guid* const kType = &tern::kVeloEventGeneratorId;

// Adds up what it hears and ends the loop with the last message.
class CountingListener : public tern::AbstractListener {
public:
    CountingListener(tern::EventBroker& broker, long expected, std::uint64_t& sum)
        : _broker(broker), _expected(expected), _sum(sum) {}

    [[nodiscard]] const arbor::Guid* getClassId() const override { return &tern::kDebugListenerId; }
    bool notify(arbor::IMessage* message) override {
        if (message->getType() != kType) return false;
        _sum += message->getCode();
        _sum += of(message->getProperties()->getInt(L"status", 0));
        if (++_heard == _expected) _broker.stop(nullptr, 0);
        return false;
    }

private:
    tern::EventBroker& _broker;
    long _expected;
    long _heard = 0;
    std::uint64_t& _sum;
};

class PlainCountingListener : public plain::Listener {
public:
    PlainCountingListener(plain::Broker& broker, long expected, std::uint64_t& sum)
        : _broker(broker), _expected(expected), _sum(sum) {}

    bool notify(const plain::Message& message) override {
        if (message.type != kType) return false;
        _sum += message.code;
        _sum += of(plain::get(message.properties, L"status", std::int32_t{0}));
        if (++_heard == _expected) _broker.stop();
        return false;
    }

private:
    plain::Broker& _broker;
    long _expected;
    long _heard = 0;
    std::uint64_t& _sum;
};

void postBare(tern::EventBroker& broker) {
    broker.post(kType, kStatusClass, 0, nullptr);
}
void postBare(plain::Broker& broker) {
    broker.post(std::make_unique<plain::Message>(kType, kStatusClass, 0U));
}

void postStatus(tern::EventBroker& broker) {
    auto message = std::make_shared<arbor::Message>(kType, kStatusClass, 0);
    message->getProperties()->setInt(tern::message_key::kSubcode, 3);
    message->getProperties()->setInt(tern::message_key::kStatus, kPaperOut);
    broker.enqueue(std::move(message));
}
void postStatus(plain::Broker& broker) {
    auto message = std::make_unique<plain::Message>(kType, kStatusClass, 0U);
    plain::set(message->properties, L"subcode", 3);
    plain::set(message->properties, L"status", kPaperOut);
    broker.post(std::move(message));
}

// Posts the next batch whenever the loop has nothing to do. A batch at a time, so that the
// queue stays short.
template <typename Post>
auto producerOf(long times, Post post) {
    return [left = times, post]() mutable {
        const long batch = std::min(left, kBatch);
        for (long i = 0; i < batch; ++i)
            post();
        left -= batch;
    };
}

// Messages come from the idle turns of the loop, or from a thread that `beside` starts and that is
// joined at the end.
template <typename Idle, typename Beside>
std::uint64_t runFramework(long times, Idle idle, Beside beside) {
    std::uint64_t sum = 0;
    SilentManager manager;
    tern::EventBroker broker(&manager);
    manager.pumpsWith(idle(broker));
    for (int i = 0; i < kListeners; ++i) {
        broker.addComponent(new CountingListener(broker, times, sum));  // the broker owns it
    }
    [[maybe_unused]] const auto producer = beside(broker);
    broker.run();
    return sum;
}

template <typename Idle, typename Beside>
std::uint64_t runReference(long times, Idle idle, Beside beside) {
    std::uint64_t sum = 0;
    std::function<void()> whenIdle;
    plain::Broker broker([&whenIdle] { whenIdle(); });
    whenIdle = idle(broker);
    std::vector<std::unique_ptr<PlainCountingListener>> listeners;
    for (int i = 0; i < kListeners; ++i) {
        listeners.push_back(std::make_unique<PlainCountingListener>(broker, times, sum));
        broker.add(listeners.back().get());
    }
    [[maybe_unused]] const auto producer = beside(broker);
    broker.run();
    return sum;
}

// For workloads without a thread. What it returns is only kept, so it may be anything.
constexpr auto kNobodyBeside = [](auto&) { return 0; };

}  // namespace

std::uint64_t deliveryFramework(long times) {
    return runFramework(
        times, [times](auto& broker) { return producerOf(times, [&broker] { postBare(broker); }); },
        kNobodyBeside);
}

std::uint64_t deliveryReference(long times) {
    return runReference(
        times, [times](auto& broker) { return producerOf(times, [&broker] { postBare(broker); }); },
        kNobodyBeside);
}

std::uint64_t payloadDeliveryFramework(long times) {
    return runFramework(
        times,
        [times](auto& broker) { return producerOf(times, [&broker] { postStatus(broker); }); },
        kNobodyBeside);
}

std::uint64_t payloadDeliveryReference(long times) {
    return runReference(
        times,
        [times](auto& broker) { return producerOf(times, [&broker] { postStatus(broker); }); },
        kNobodyBeside);
}

std::uint64_t threadedDeliveryFramework(long times) {
    return runFramework(
        times, [](auto&) { return [] { std::this_thread::yield(); }; },
        [times](auto& broker) {
            return std::jthread([&broker, times] {
                for (long i = 0; i < times; ++i)
                    postStatus(broker);
            });
        });
}

std::uint64_t threadedDeliveryReference(long times) {
    return runReference(
        times, [](auto&) { return [] { std::this_thread::yield(); }; },
        [times](auto& broker) {
            return std::jthread([&broker, times] {
                for (long i = 0; i < times; ++i)
                    postStatus(broker);
            });
        });
}

}  // namespace bench
