#pragma once

#include "arbor/i_listener.h"
#include "arbor/i_message.h"
#include "arbor/i_thread.h"
#include "arbor/property_holder.h"
#include "platform/thread.h"
#include "tern/abstract_instance_manager.h"
#include "tern/database.h"
#include "tern/event_broker.h"

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test {

// A component that receives messages: it runs the test's action and returns the test's answer.
class ListenerComponent : public arbor::PropertyHolder, public arbor::IListener {
public:
    using Action = std::function<bool(arbor::IMessage&)>;

    explicit ListenerComponent(Action action) : _action(std::move(action)) {
        setPointer(L"listener", static_cast<arbor::IListener*>(this));
    }
    ~ListenerComponent() override {
        if (onDestruction) onDestruction();
    }

    bool notify(arbor::IMessage* message) override {
        ++heard;
        return _action(*message);
    }

    int heard = 0;
    std::function<void()> onDestruction;

private:
    Action _action;
};

// A thread that never runs. It counts the calls of start() and runs the test's action in each.
class CountingThread : public arbor::IThread {
public:
    void start() override {
        ++starts;
        if (onStart) onStart();
    }
    bool isFinished() override { return false; }
    std::uint32_t wait(std::uint32_t) override { return 0; }
    void reserved4() override {}
    bool reserved5() override { return true; }
    bool reserved6() override { return true; }
    bool reserved7() override { return true; }
    const std::atomic<platform::NativeHandle>* getHandle() override { return nullptr; }
    void addObserver(arbor::IListener*) override {}
    void removeObserver(arbor::IListener*) override {}
    std::uint32_t getThreadId() override { return 0; }

    int starts = 0;
    std::function<void()> onStart;
};

// An instance manager with the broker of the test. pumpOnce() runs the test's action.
template <typename Broker = tern::EventBroker>
class TestManager : public tern::AbstractInstanceManager {
public:
    TestManager() : database(this), broker(this) { attach(&database, &broker); }

    void pumpOnce() override {
        ++pumps;
        if (onPump) onPump();
    }

    std::function<void()> onPump;
    int pumps = 0;
    tern::Database database;
    Broker broker;
};

}  // namespace test
