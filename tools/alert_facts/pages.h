#pragma once

#include "tools/alert_facts/facts.h"

#include <string>

namespace alert_facts {

// The facts for the page of the gallery: one JSON object, with the texts of every language.
[[nodiscard]] std::string jsonOf(const Facts& facts);

// The facts as tables in Markdown, in English: docs/alerts.md.
[[nodiscard]] std::string tableOf(const Facts& facts);

}  // namespace alert_facts
