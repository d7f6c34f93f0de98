#pragma once

#include "arbor/guid.h"
#include "arbor/i_property_holder.h"
#include "tern/abstract_event_generator.h"

#include <cstdint>

namespace tern {

// Posts a tick without payload at a fixed interval, for as long as it lives.
class TimerEventGenerator : public AbstractEventGenerator {
public:
    static constexpr std::uint32_t kTickCode = 123;
    static constexpr std::int32_t kDefaultIntervalMs = 60000;
    static constexpr std::int32_t kShortestIntervalMs = 10;
    static constexpr std::int32_t kLongestIntervalMs = 86400000;  // a day

    // Reads "interval" (milliseconds) from the parameters, limited to the range above.
    TimerEventGenerator(const arbor::IPropertyHolder& parameters, IInstanceManager* owner);
    ~TimerEventGenerator() override;

    [[nodiscard]] const arbor::Guid* getClassId() const override;
    std::uint32_t run() override;

    [[nodiscard]] std::uint32_t intervalMs() const noexcept { return _intervalMs; }

private:
    std::uint32_t _intervalMs;
};

}  // namespace tern
