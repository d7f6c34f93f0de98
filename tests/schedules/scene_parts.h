#pragma once

#include "arbor/i_message.h"
#include "arbor/simple_message.h"
#include "platform/simulated/world.h"
#include "platform/thread.h"
#include "tern/abstract_event_generator.h"
#include "tern/abstract_listener.h"
#include "tern/channel_settings.h"
#include "tern/class_ids.h"
#include "tern/instance_manager.h"
#include "tern/velo_record.h"
#include "tests/support/exploring/exploration.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The classes that the scenes of broker, generators and shutdown are built from.
namespace scene {

using exploring::require;

inline constexpr wchar_t kPipe[] = L"channel";
inline constexpr int kPreemptions = 3;

using Codes = std::vector<std::uint32_t>;

// Runs the scene of the current test under every schedule, under the name of that test.
inline void playEverySchedule(const std::function<void()>& play) {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    EXPECT_GT(exploring::everySchedule(name, kPreemptions, play), 0);
}

// A monitor's framework with the real instance manager. Its channel is set to an existing pipe.
class Framework {
public:
    Framework() {
        platform::simulated::world().pipes.create(kPipe);
        auto& settings = tern::channelSettings();
        std::wmemcpy(settings.inputPipe.data(), kPipe, std::size(kPipe));
        settings.printerId = 0;
        _manager = tern::NewInstanceManager("", 0, nullptr);
    }
    ~Framework() { tern::TERN_DeleteInstanceManager(_manager); }
    Framework(const Framework&) = delete;
    Framework& operator=(const Framework&) = delete;

    tern::IInstanceManager& manager() { return *_manager; }
    tern::EventBroker& broker() { return *_manager->getEventBroker(); }
    void stop() { broker().stop(&tern::kVeloListenerId, 0); }
    void run() { require(_manager->run() == 0, "run() returns 0"); }

    // The parameters that the instance manager gives to a generator.
    [[nodiscard]] arbor::PropertyHolder& parameters() {
        _parameters.setPointer(L"threadControl", static_cast<arbor::IListener*>(&broker()));
        return _parameters;
    }
    // Adds a component of the test and returns it. The broker then owns it.
    template <typename Component>
    Component* add(std::unique_ptr<Component> component) {
        require(broker().addComponent(component.get()), "the broker takes a component");
        return component.release();
    }

private:
    tern::IInstanceManager* _manager;  // owned
    arbor::PropertyHolder _parameters;
};

// Receives every message on the main thread. No lock may be held while a listener runs, or a
// listener that waits for another thread would deadlock.
class Listener : public tern::AbstractListener {
public:
    using Action = std::function<void(arbor::IMessage&)>;
    explicit Listener(Action action) : _action(std::move(action)) {}

    [[nodiscard]] const arbor::Guid* getClassId() const override { return &tern::kVeloListenerId; }
    bool notify(arbor::IMessage* message) override {
        require(exploring::locksHeld() == 0, "no lock is held while a listener runs");
        _action(*message);
        return false;
    }

private:
    Action _action;
};

// Posts messages with the codes that it is given, then ends.
class Producer : public tern::AbstractEventGenerator {
public:
    Producer(Framework& framework, Codes codes)
        : AbstractEventGenerator(framework.parameters(), &framework.manager()),
          _codes(std::move(codes)) {}
    ~Producer() override { endThreadUse(); }

    [[nodiscard]] const arbor::Guid* getClassId() const override {
        return &tern::kTimerEventGeneratorId;
    }
    std::uint32_t run() override {
        for (const std::uint32_t code : _codes)
            owner()->getEventBroker()->post(getClassId(), code, 0, nullptr);
        return 0;
    }

private:
    Codes _codes;
};

// Ends the loop at the first message.
inline void stopAtFirstMessage(Framework& framework) {
    framework.add(std::make_unique<Listener>([&framework](arbor::IMessage&) { framework.stop(); }));
}

// A thread outside of the framework. Its destructor waits for it.
class OutsideThread {
public:
    explicit OutsideThread(std::function<void()> body) : _body(std::move(body)) {
        _thread = platform::startThread(&OutsideThread::procedure, this, _id);
    }
    ~OutsideThread() {
        platform::waitForThread(_thread, 0xFFFFFFFF);
        platform::closeThread(_thread);
    }
    OutsideThread(const OutsideThread&) = delete;
    OutsideThread& operator=(const OutsideThread&) = delete;

private:
    static std::uint32_t procedure(void* self) {
        static_cast<OutsideThread*>(self)->_body();
        return 0;
    }

    std::function<void()> _body;
    platform::NativeHandle _thread = nullptr;
    std::atomic<std::uint32_t> _id{0};
};

// Puts a device status record into the channel: one write for header and body.
inline void feedStatus(unsigned char status) {
    tern::VeloHeader header;
    header.magic = tern::kVeloMagic;
    header.recordClass = static_cast<std::uint32_t>(tern::RecordClass::Status);
    header.subcode = tern::kDeviceStatus;
    header.bodyBytes = sizeof(std::uint32_t);
    const tern::VeloHeaderBytes bytes = tern::encodedHeader(header);
    std::string record(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    record += static_cast<char>(status);
    record.append(3, '\0');
    platform::simulated::world().pipes.feed(kPipe, record);
}

inline void closeChannel() {
    platform::simulated::world().pipes.close(kPipe);
}

}  // namespace scene
