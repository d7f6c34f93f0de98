#pragma once

#include "arbor/property_holder.h"
#include "platform/simulated/world.h"
#include "tern/velo_event_generator.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"
#include "tests/support/test_components.h"

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

// Reads records on the test's own thread, because only the allocations of that thread fail.
namespace fault_injection {

// Receives the messages of a generator that reads on the calling thread. It deletes them instead of
// delivering them, but counts those that arrived and those of them that are complete.
class CountingBroker : public tern::EventBroker {
public:
    using EventBroker::EventBroker;
    bool enqueue(tern::MessageReference message) override {
        ++messages;
        const arbor::IPropertyHolder& bag = *message->getProperties();
        if (bag.getInt(L"status", -1) == 41100) ++whole;
        blockBytes = bag.getInt(L"oembufferSize", -1);
        hasBlock = bag.getPointer(L"oemMessages", nullptr) != nullptr;
        return true;
    }
    bool stop(const arbor::Guid*, std::uint32_t) override {
        ++stops;
        return true;
    }
    int messages = 0;
    int whole = 0;
    int stops = 0;
    std::int32_t blockBytes = -1;  // size of the last message's OEM block; -1 when it has none
    bool hasBlock = false;
};

class ErrorRecordingGenerator : public tern::VeloEventGenerator {
public:
    using VeloEventGenerator::VeloEventGenerator;
    ~ErrorRecordingGenerator() override { endThreadUse(); }

    void buildMessage(const tern::VeloHeader& header, tern::EventBroker* broker) override {
        try {
            VeloEventGenerator::buildMessage(header, broker);
        } catch (const std::runtime_error& told) {
            // std::strcmp needs no memory, which may have run out; a std::string would.
            if (std::strcmp(told.what(), "failed to create Message instance") == 0) ++refusals;
            throw;
        }
    }
    using AbstractThread::runOnThisThread;

    int refusals = 0;
};

// A generator whose body runs on the test's thread. Only the allocations of this thread fail, so
// all allocations of the reading do.
struct Reading {
    explicit Reading(const std::string& bytes) {
        platform::simulated::world().pipes.feed(L"faults", bytes);
        platform::simulated::world().pipes.close(L"faults");
        test::setChannel(L"faults", records::kPrinter);
        arbor::PropertyHolder parameters;
        generator = std::make_unique<ErrorRecordingGenerator>(parameters, &manager);
    }
    ~Reading() {
        generator.reset();
        platform::simulated::world().pipes.reset();
    }

    test::TestManager<CountingBroker> manager;
    std::unique_ptr<ErrorRecordingGenerator> generator;
};

}  // namespace fault_injection
