#pragma once

#include "printer/alert_types.h"
#include "tools/alert_facts/facts.h"

#include <cstdint>
#include <string>
#include <vector>

// The topics are those of the people who ask; the monitor does not know them.
namespace alert_facts {

inline constexpr char kCheckTopic[] = "check";

// In the order of the page.
[[nodiscard]] const std::vector<Topic>& topics();

// The id of the topic of an alert that this status opens. Throws std::runtime_error when it has
// none.
[[nodiscard]] std::string topicOf(AlertType type, std::int32_t status);

}  // namespace alert_facts
