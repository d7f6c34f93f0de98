#pragma once

#include "arbor/i_message.h"
#include "arbor/scoped_lock.h"
#include "arbor/thread_annotations.h"
#include "tern/event_broker.h"

#include <atomic>
#include <vector>

namespace test {

// A broker that keeps the messages of a generator instead of delivering them.
class RecordingBroker : public tern::EventBroker {
public:
    using EventBroker::EventBroker;

    bool enqueue(tern::MessageReference message) override {
        const arbor::ScopedLock<arbor::Mutex> lock(*this);
        _messages.push_back(std::move(message));
        return true;
    }
    bool stop(const arbor::Guid* who, std::uint32_t flags) override {
        ++stops;
        stoppedBy = who;
        stopFlags = flags;
        return EventBroker::stop(who, flags);
    }

    // In the order in which they were enqueued.
    [[nodiscard]] std::vector<tern::MessageReference> messages() {
        const arbor::ScopedLock<arbor::Mutex> lock(*this);
        return _messages;
    }

    std::atomic<int> stops{0};
    std::atomic<const arbor::Guid*> stoppedBy{nullptr};
    std::atomic<std::uint32_t> stopFlags{99};

private:
    std::vector<tern::MessageReference> _messages ARBOR_GUARDED_BY(this);
};

}  // namespace test
