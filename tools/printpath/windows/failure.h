#pragma once

#include <stdexcept>
#include <string>

namespace printpath {

// How a scenario went; the number is printpath's exit code.
enum class Outcome {
    AsExpected = 0,
    NotAsExpected = 1,  // something was not seen, or the monitor ended with another exit code
    Unusable = 2,       // wrong options or scenario, or something that it needs is missing
    Crashed = 3,        // the monitor ended by an exception or abort()
    Hung = 4            // the monitor did not read, answer or end in time
};

// Ends the scenario. The text says what was awaited and what was found.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& what, Outcome outcome = Outcome::NotAsExpected)
        : std::runtime_error(what), _outcome(outcome) {}

    Outcome outcome() const { return _outcome; }

private:
    Outcome _outcome;
};

}  // namespace printpath
