#pragma once

#include "tests/support/exploring/schedule.h"

#include <semaphore.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace exploring {

// A thread of the scene. Number 1 is the thread that plays it; the others are carried by threads
// that serve one scene after the other, since making one costs more than a whole scene.
struct Worker {
    explicit Worker(std::uint32_t itsNumber) : number(itsNumber) { sem_init(&turn, 0, 0); }
    ~Worker() { sem_destroy(&turn); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    const std::uint32_t number;
    sem_t turn;  // posted when this thread is chosen
    std::function<std::uint32_t()> body;
    bool hasCarrier = false;
    bool hasEnded = true;
    std::uint32_t exitCode = 0;
    int locksHeld = 0;

    // Empty: the thread can run. Else it waits until `ready` says so, or until `wakeAtMs`.
    std::function<bool()> ready;
    const void* waitsFor = nullptr;
    const char* waitName = "";
    std::uint64_t wakeAtMs = 0;
};

// Lets the threads of a scene run one at a time. They change places at calls of the platform only,
// as a Schedule says. Time stands still while a thread can run; when all sleep, it moves on to the
// first that wakes. While no scene is played there is one thread, and nothing here waits.
class Scheduler {
public:
    static constexpr std::uint64_t kForEver = ~std::uint64_t{0};
    static constexpr int kFailureExitCode = 3;

    // The one of this process.
    [[nodiscard]] static Scheduler& instance();

    // Plays the scene to the end of its last thread. A failure prints `name` and the choices, and
    // ends the process: threads that wait for each other cannot be taken apart.
    void play(const std::string& name, Schedule& schedule, const std::function<void()>& scene);

    // Ends the process when a promise is broken. Any thread of the scene.
    [[noreturn]] void fail(const std::string& text);

    // The rest is for the platform's calls.

    [[nodiscard]] bool isPlaying() const noexcept { return _schedule != nullptr; }
    // The scene is over: a read that would wait fails, so that its thread can end.
    [[nodiscard]] bool isEnding() const noexcept { return _isEnding; }
    // The thread that runs; null when no scene is played.
    [[nodiscard]] Worker* current() const noexcept { return _current; }
    // Another thread may go on here.
    void point();
    // Until `ready` or the time-out; tells whether it was `ready`.
    bool waitUntil(const char* name, const void* what, std::function<bool()> ready,
                   std::uint64_t timeoutMs = kForEver);
    [[nodiscard]] bool isWaitedFor(const void* what) const;
    Worker* start(std::function<std::uint32_t()> body);

    // Called at an abnormal end that is not ours, such as a sanitizer's.
    void printRoad() noexcept;

private:
    static constexpr int kPointLimit = 20000;

    Scheduler();

    struct Options {
        std::vector<Worker*> workers;
        std::size_t freeOptions = 0;
    };
    [[nodiscard]] Options options();
    [[nodiscard]] Worker* next();
    void moveTimeOn();
    void handOver();
    Worker* take();
    void carry(Worker& worker);
    [[nodiscard]] std::string waits() const;

    std::string _name;
    Schedule* _schedule = nullptr;                  // not owned; null: no scene is played
    std::vector<std::unique_ptr<Worker>> _workers;  // of this scene and of those before it
    std::size_t _used = 0;                          // of _workers, by this scene
    Worker* _current = nullptr;
    std::uint64_t _nowMs = 0;
    int _points = 0;
    bool _isEnding = false;
};

}  // namespace exploring
