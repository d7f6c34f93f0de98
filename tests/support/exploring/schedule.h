#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace exploring {

// The choices of one run of a scene: at every point where several threads can continue, the number
// of the thread that does. Options are numbered so that the first `voluntaryOptions` are no
// preemption: the running thread alone while it can continue, otherwise all threads that can.
class Schedule {
public:
    struct Choice {
        std::size_t taken = 0;
        std::size_t options = 1;
        std::size_t voluntaryOptions = 1;
        int preemptionsBefore = 0;
    };

    // Follows `choices` and takes option 0 after their end.
    explicit Schedule(std::vector<std::size_t> choices = {}) : _prescribed(std::move(choices)) {}
    // Chooses at random, and preempts the running thread one time in `kPreemptOneIn`.
    [[nodiscard]] static Schedule random(std::uint64_t seed);
    // Reads "0,2,1"; throws std::invalid_argument for anything else.
    [[nodiscard]] static Schedule parsed(const std::string& text);

    [[nodiscard]] std::size_t choose(std::size_t options, std::size_t voluntaryOptions);
    // Moves on to the next schedule in depth-first order with at most `preemptionLimit`
    // preemptions. False when this was the last one.
    [[nodiscard]] bool advance(int preemptionLimit);

    // The choices that were taken, as parsed() reads them, without the zeros at the end.
    [[nodiscard]] std::string text() const;
    // Prepares the same choices to be taken again from the start.
    void rewind();

private:
    static constexpr unsigned kPreemptOneIn = 8;

    [[nodiscard]] std::size_t atRandom(std::size_t options, std::size_t voluntaryOptions);

    std::vector<std::size_t> _prescribed;
    std::vector<Choice> _choices;
    int _preemptions = 0;
    bool _isRandom = false;
    std::mt19937_64 _generator;
};

}  // namespace exploring
