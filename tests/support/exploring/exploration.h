#pragma once

#include <cstdint>
#include <functional>
#include <string>

// Runs a scene of threads under every schedule with a limited number of preemptions. A program that
// links the sources of this folder gets the locks, threads and pipe reads of this folder instead of
// the simulated platform's, because the linker takes a program's own objects before a library's.
namespace exploring {

// What the command line asks for. Without options every schedule is run.
struct Options {
    std::string replay;  // --replay=0,2,1: run only the schedule with these choices
    bool isReplay = false;
    std::uint64_t seeds = 0;      // --random=100000: run this many random schedules instead of all
    std::uint64_t firstSeed = 1;  // --seed=1
};
[[nodiscard]] Options& options();
// Reads the flags above and removes them from the arguments.
void readOptions(int& argumentCount, char** arguments);

// Runs the scene under every schedule with at most `preemptions` preemptions, each time from an
// empty simulated world, and returns how many schedules there are. When a requirement fails, or the
// scene deadlocks, crashes or does not end, this prints the choices of the schedule and ends the
// whole process.
long everySchedule(const std::string& name, int preemptions, const std::function<void()>& scene);

// For scenes: fails the schedule and ends the process when the requirement is not met.
void require(bool isMet, const std::string& requirement);
// The number of locks that the calling thread holds.
[[nodiscard]] int locksHeld();

}  // namespace exploring
