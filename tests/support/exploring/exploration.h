#pragma once

#include <cstdint>
#include <functional>
#include <string>

// Plays a scene of threads in every order that matters. A program that links the sources of this
// folder gets its locks, threads and pipe reads instead of the simulated platform's: the linker
// takes a program's own objects before those of a library.
namespace exploring {

// What the command line asks for; a test run asks for nothing.
struct Options {
    std::string replay;  // --replay=0,2,1: this road only, see replayed
    bool isReplay = false;
    std::uint64_t seeds = 0;      // --random=100000: so many random roads instead of all
    std::uint64_t firstSeed = 1;  // --seed=1
};
[[nodiscard]] Options& options();
// Takes the flags above out of the arguments.
void readOptions(int& argumentCount, char** arguments);

// Plays the scene in every order with up to `forcedSwitches` forced switches, each time from an
// empty world, and returns how many there are. A broken promise, a deadlock, a scene that does not
// end and a crash print the choices and end the process.
long everySchedule(const std::string& name, int forcedSwitches, const std::function<void()>& scene);

// How many schedules this process has played, all scenes together.
[[nodiscard]] long schedulesPlayed();

// For scenes: a promise. A broken one is a failure of the schedule.
void require(bool isKept, const std::string& promise);
// Locks that the calling thread holds.
[[nodiscard]] int locksHeld();

}  // namespace exploring
