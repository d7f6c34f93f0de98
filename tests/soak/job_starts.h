#pragma once

#include <cstdint>

namespace soak {

class Report;
class Workplace;

// So many jobs, each with a monitor, a pipe and a document of its own, as the print path starts
// them: quiet ones, some whose alert goes with the document, some whose alert the user closes
// afterwards, some whose print path is gone in the middle of a record. After each the monitor has
// ended with exit code 0 and the memory of cartridges is whole.
void playJobs(const Workplace& workplace, std::uint64_t jobs, Report& report);

}  // namespace soak
