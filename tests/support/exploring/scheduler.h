#pragma once

#include "tests/support/exploring/schedule.h"

#include <semaphore.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace exploring {

// A thread of the scene. Number 1 is the thread that runs the scene. The others run on system
// threads that are used again for the next scene, because starting one takes longer than a scene.
struct Worker {
    explicit Worker(std::uint32_t itsNumber) : number(itsNumber) { sem_init(&turn, 0, 0); }
    ~Worker() { sem_destroy(&turn); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    const std::uint32_t number;
    sem_t turn;  // posted when this thread is chosen
    std::function<std::uint32_t()> body;
    bool hasSystemThread = false;
    bool hasEnded = true;
    std::uint32_t exitCode = 0;
    int locksHeld = 0;

    // Empty while the thread can run. Otherwise it waits until `ready` is true or until `wakeAtMs`.
    std::function<bool()> ready;
    const void* waitsFor = nullptr;
    const char* waitName = "";
    std::uint64_t wakeAtMs = 0;
};

// Runs the threads of a scene one at a time. The running thread changes only at calls of the
// platform, as a Schedule says. The clock stands still while a thread can run; when all threads
// sleep, it advances to the first that wakes. While no scene runs, nothing here waits.
class Scheduler {
public:
    static constexpr std::uint64_t kForEver = ~std::uint64_t{0};
    static constexpr int kFailureExitCode = 3;

    // The only scheduler of this process.
    [[nodiscard]] static Scheduler& instance();

    // Runs the scene to the end of its last thread. A failure prints `name` and the choices, and
    // ends the process, because threads that wait for each other cannot be stopped.
    void play(const std::string& name, Schedule& schedule, const std::function<void()>& scene);

    // Prints the text and the schedule, and ends the process. Any thread of the scene may call it.
    [[noreturn]] void fail(const std::string& text);

    // The functions below are for this folder's implementation of the platform.

    [[nodiscard]] bool isPlaying() const noexcept { return _schedule != nullptr; }
    // True when the scene is over. A read that would wait then fails, so that its thread can end.
    [[nodiscard]] bool isEnding() const noexcept { return _isEnding; }
    // The running thread; null when no scene runs.
    [[nodiscard]] Worker* current() const noexcept { return _current; }
    // Another thread may continue here.
    void point();
    // Waits until `ready` is true or the time-out has passed; returns whether `ready` is true.
    bool waitUntil(const char* name, const void* what, std::function<bool()> ready,
                   std::uint64_t timeoutMs = kForEver);
    [[nodiscard]] bool isWaitedFor(const void* what) const;
    Worker* start(std::function<std::uint32_t()> body);

    // Called when something else ends the process, such as a sanitizer.
    void printSchedule() noexcept;

private:
    static constexpr int kPointLimit = 20000;

    Scheduler();

    struct Options {
        std::vector<Worker*> workers;
        std::size_t voluntaryOptions = 0;
    };
    [[nodiscard]] Options options();
    [[nodiscard]] Worker* next();
    void advanceTime();
    void switchThread();
    Worker* take();
    void runWorker(Worker& worker);
    [[nodiscard]] std::string waits() const;

    std::string _name;
    Schedule* _schedule = nullptr;                  // not owned; null while no scene runs
    std::vector<std::unique_ptr<Worker>> _workers;  // made for this scene or for an earlier one
    std::size_t _used = 0;                          // how many of _workers this scene uses
    Worker* _current = nullptr;
    std::uint64_t _nowMs = 0;
    int _points = 0;
    bool _isEnding = false;
};

}  // namespace exploring
