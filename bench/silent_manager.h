#pragma once

#include "tern/abstract_instance_manager.h"

#include <functional>

namespace bench {

// An instance manager without registry and windows; its idle turns do what the benchmark wants.
class SilentManager : public tern::AbstractInstanceManager {
public:
    explicit SilentManager(tern::EventBroker* broker = nullptr) noexcept : _broker(broker) {}

    tern::EventBroker* getEventBroker() override { return _broker; }
    void owns(tern::EventBroker* broker) noexcept { _broker = broker; }
    void pumpsWith(std::function<void()> idle) { _idle = std::move(idle); }
    void pumpOnce() override { _idle(); }

private:
    tern::EventBroker* _broker;  // not owned
    std::function<void()> _idle;
};

}  // namespace bench
