#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace exploring {

// One road through a scene: at every point where several threads could go on, the number of the one
// that does. Options are numbered so that the first `freeOptions` need no forced switch: the thread
// that runs, as long as it can, else all that can run.
class Schedule {
public:
    struct Choice {
        std::size_t taken = 0;
        std::size_t options = 1;
        std::size_t freeOptions = 1;
        int forcedBefore = 0;
    };

    // Follows `choices` and takes option 0 after their end.
    explicit Schedule(std::vector<std::size_t> choices = {}) : _prescribed(std::move(choices)) {}
    // Chooses at random, one time in `kForcedOneIn` against the thread that runs.
    [[nodiscard]] static Schedule random(std::uint64_t seed);
    // Reads "0,2,1"; throws std::invalid_argument for anything else.
    [[nodiscard]] static Schedule parsed(const std::string& text);

    [[nodiscard]] std::size_t choose(std::size_t options, std::size_t freeOptions);
    // The next road in depth-first order with at most `forcedLimit` forced switches, from what this
    // one took; false when there is none.
    [[nodiscard]] bool advance(int forcedLimit);

    // What was taken, as parsed() reads it; without the zeros at the end.
    [[nodiscard]] std::string text() const;
    // Ready to be played again from the start, with the same choices.
    void rewind();

private:
    static constexpr unsigned kForcedOneIn = 8;

    [[nodiscard]] std::size_t atRandom(std::size_t options, std::size_t freeOptions);

    std::vector<std::size_t> _prescribed;
    std::vector<Choice> _choices;
    int _forced = 0;
    bool _isRandom = false;
    std::mt19937_64 _generator;
};

}  // namespace exploring
