#pragma once

#include <cstdint>

namespace soak {

class Report;
class Workplace;

// One monitor that lives through documents of a hundred records each. An alert that nobody closes
// holds it while they end; alerts go with their documents, and in every round the user answers some
// and gets a new cartridge. All that a round has opened is closed again when the gauges are read.
void playLongLife(const Workplace& workplace, std::uint64_t records, Report& report);

}  // namespace soak
