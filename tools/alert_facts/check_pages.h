#pragma once

#include "tools/alert_facts/facts.h"
#include "tools/alert_facts/simulated_monitor.h"

#include <map>
#include <string>
#include <vector>

namespace alert_facts {

// The cartridge check and its details. They are no alerts of a status: the link of a new cartridge
// opens the first one, and its link the second. `texts` are those of each language by its code.
[[nodiscard]] std::vector<AlertFact> checkPages(const std::map<std::string, TextsById>& texts,
                                                const std::vector<Picture>& pictures);

}  // namespace alert_facts
