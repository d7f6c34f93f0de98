#include "tests/support/exploring/schedule.h"

#include <charconv>
#include <stdexcept>

namespace exploring {

Schedule Schedule::random(std::uint64_t seed) {
    Schedule schedule;
    schedule._isRandom = true;
    schedule._generator.seed(seed);
    return schedule;
}

Schedule Schedule::parsed(const std::string& text) {
    std::vector<std::size_t> choices;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        std::size_t choice = 0;
        const auto read = std::from_chars(at, end, choice);
        if (read.ec != std::errc() || (read.ptr != end && *read.ptr != ',')) {
            throw std::invalid_argument("not a list of choices: " + text);
        }
        choices.push_back(choice);
        at = read.ptr == end ? end : read.ptr + 1;
    }
    return Schedule(std::move(choices));
}

std::size_t Schedule::atRandom(std::size_t options, std::size_t voluntaryOptions) {
    const bool preempt = options > voluntaryOptions && _generator() % kPreemptOneIn == 0;
    if (!preempt) return _generator() % voluntaryOptions;
    return voluntaryOptions + _generator() % (options - voluntaryOptions);
}

std::size_t Schedule::choose(std::size_t options, std::size_t voluntaryOptions) {
    const std::size_t place = _choices.size();
    std::size_t taken = 0;
    if (_isRandom) {
        taken = atRandom(options, voluntaryOptions);
    } else if (place < _prescribed.size() && _prescribed[place] < options) {
        taken = _prescribed[place];
    }
    _choices.push_back({taken, options, voluntaryOptions, _preemptions});
    if (taken >= voluntaryOptions) ++_preemptions;
    return taken;
}

bool Schedule::advance(int preemptionLimit) {
    while (!_choices.empty()) {
        Choice& last = _choices.back();
        const std::size_t limit =
            last.preemptionsBefore < preemptionLimit ? last.options : last.voluntaryOptions;
        if (last.taken + 1 < limit) {
            ++last.taken;
            rewind();
            return true;
        }
        _choices.pop_back();
    }
    return false;
}

void Schedule::rewind() {
    _prescribed.clear();
    for (const Choice& choice : _choices)
        _prescribed.push_back(choice.taken);
    _choices.clear();
    _preemptions = 0;
    _isRandom = false;
}

std::string Schedule::text() const {
    std::size_t length = _choices.size();
    while (length > 0 && _choices[length - 1].taken == 0)
        --length;
    std::string text;
    for (std::size_t index = 0; index < length; ++index) {
        if (index > 0) text += ',';
        text += std::to_string(_choices[index].taken);
    }
    return text;
}

}  // namespace exploring
