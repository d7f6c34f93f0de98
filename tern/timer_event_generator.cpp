#include "tern/timer_event_generator.h"

#include "platform/thread.h"
#include "tern/class_ids.h"
#include "tern/component_keys.h"
#include "tern/event_broker.h"
#include "tern/i_instance_manager.h"

#include <algorithm>

namespace tern {

TimerEventGenerator::TimerEventGenerator(const arbor::IPropertyHolder& parameters,
                                         IInstanceManager* owner)
    : AbstractEventGenerator(parameters, owner),
      _intervalMs(static_cast<std::uint32_t>(
          std::clamp(parameters.getInt(component_key::kInterval, kDefaultIntervalMs),
                     kShortestIntervalMs, kLongestIntervalMs))) {
    requestStart();
}

TimerEventGenerator::~TimerEventGenerator() {
    endThreadUse();
}

const arbor::Guid* TimerEventGenerator::getClassId() const {
    return &kTimerEventGeneratorId;
}

std::uint32_t TimerEventGenerator::run() {
    // A copy, because the work outside must touch nothing of the object.
    for (const std::uint32_t intervalMs = _intervalMs;;) {
        outside([intervalMs] { platform::sleepFor(intervalMs); });
        owner()->getEventBroker()->post(getClassId(), kTickCode, 0, nullptr);
    }
}

}  // namespace tern
