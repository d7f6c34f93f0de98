#include "tests/support/exploring/scheduler.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace exploring {
namespace {

void printScheduleAtDeath() {
    Scheduler::instance().printSchedule();
}

void printScheduleOnSignal(int signal) {
    Scheduler::instance().printSchedule();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void waitForTurn(Worker& worker) {
    while (sem_wait(&worker.turn) != 0) {
    }
}

}  // namespace

Scheduler& Scheduler::instance() {
    static Scheduler* const scheduler =
        new Scheduler;  // never destroyed: static objects lock at exit
    return *scheduler;
}

Scheduler::Scheduler() {
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(&printScheduleAtDeath);
        return;
    }
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGBUS})
        std::signal(signal, &printScheduleOnSignal);
}

void Scheduler::play(const std::string& name, Schedule& schedule,
                     const std::function<void()>& scene) {
    _name = name;
    _schedule = &schedule;
    _nowMs = 0;
    _points = 0;
    _isEnding = false;
    _used = 0;
    _current = take();

    scene();

    _isEnding = true;
    waitUntil("the end of all threads", this, [this] {
        return std::all_of(_workers.begin() + 1, _workers.end(),
                           [](const auto& worker) { return worker->hasEnded; });
    });
    _current->hasEnded = true;
    _schedule = nullptr;
    _current = nullptr;
}

void Scheduler::printSchedule() noexcept {
    if (_schedule == nullptr) return;
    std::fprintf(stderr, "In the scene %s. Replay: --gtest_filter='*.%s' --replay=%s\n",
                 _name.c_str(), _name.c_str(), _schedule->text().c_str());
}

void Scheduler::fail(const std::string& text) {
    const std::uint32_t number = _current != nullptr ? _current->number : 0;
    std::fprintf(stderr, "schedule failed in thread %u: %s\n", number, text.c_str());
    printSchedule();
    std::fflush(nullptr);
    std::_Exit(kFailureExitCode);
}

std::string Scheduler::waits() const {
    std::string text;
    for (const auto& worker : _workers) {
        if (worker->hasEnded || !worker->ready) continue;
        text += "; thread " + std::to_string(worker->number) + " waits for " + worker->waitName;
    }
    return text;
}

void Scheduler::point() {
    if (!isPlaying()) return;
    switchThread();
}

bool Scheduler::waitUntil(const char* name, const void* what, std::function<bool()> ready,
                          std::uint64_t timeoutMs) {
    if (!isPlaying()) return ready();
    Worker& self = *_current;
    self.ready = std::move(ready);
    self.waitsFor = what;
    self.waitName = name;
    self.wakeAtMs = timeoutMs == kForEver ? kForEver : _nowMs + timeoutMs;
    switchThread();
    const bool isReady = self.ready();
    self.ready = nullptr;
    self.waitsFor = nullptr;
    return isReady;
}

bool Scheduler::isWaitedFor(const void* what) const {
    return std::any_of(_workers.begin(), _workers.end(),
                       [what](const auto& worker) { return worker->waitsFor == what; });
}

Worker* Scheduler::take() {
    if (_used == _workers.size()) {
        _workers.push_back(std::make_unique<Worker>(static_cast<std::uint32_t>(_used + 1)));
    }
    Worker* const worker = _workers[_used++].get();
    worker->hasEnded = false;
    worker->locksHeld = 0;
    return worker;
}

Worker* Scheduler::start(std::function<std::uint32_t()> body) {
    if (!isPlaying()) fail("a thread was started outside of a scene");
    Worker* const worker = take();
    worker->body = std::move(body);
    if (!worker->hasSystemThread) {
        worker->hasSystemThread = true;
        std::thread([this, worker] { runWorker(*worker); }).detach();
    }
    return worker;
}

void Scheduler::runWorker(Worker& worker) {
    while (true) {
        waitForTurn(worker);
        worker.exitCode = worker.body();
        worker.body = nullptr;
        if (worker.locksHeld != 0) fail("a thread ended while it held a lock");
        worker.hasEnded = true;
        _current = next();
        sem_post(&_current->turn);
    }
}

void Scheduler::switchThread() {
    Worker* const self = _current;
    Worker* const chosen = next();
    if (chosen == self) return;
    _current = chosen;
    sem_post(&chosen->turn);
    waitForTurn(*self);
}

Scheduler::Options Scheduler::options() {
    Options found;
    std::vector<Worker*> asleep;
    const auto canRun = [this](const Worker& worker) {
        return !worker.ready || worker.wakeAtMs <= _nowMs || worker.ready();
    };
    const bool currentCanRun = !_current->hasEnded && canRun(*_current);
    if (currentCanRun) found.workers.push_back(_current);
    for (const auto& worker : _workers) {
        if (worker->hasEnded || (worker.get() == _current && currentCanRun)) continue;
        if (canRun(*worker)) {
            found.workers.push_back(worker.get());
        } else if (worker->wakeAtMs != kForEver) {
            asleep.push_back(worker.get());
        }
    }
    found.voluntaryOptions = currentCanRun ? 1 : found.workers.size();
    // A sleeping thread may also wake before the others wait. That counts as a preemption.
    if (!found.workers.empty())
        found.workers.insert(found.workers.end(), asleep.begin(), asleep.end());
    return found;
}

void Scheduler::advanceTime() {
    std::uint64_t earliest = kForEver;
    for (const auto& worker : _workers) {
        if (!worker->hasEnded && worker->ready) earliest = std::min(earliest, worker->wakeAtMs);
    }
    if (earliest == kForEver) fail("deadlock" + waits());
    _nowMs = earliest;
}

Worker* Scheduler::next() {
    if (++_points > kPointLimit) fail("the scene does not end" + waits());
    Options found = options();
    if (found.workers.empty()) {
        advanceTime();
        found = options();
    }
    if (found.workers.size() == 1) return found.workers.front();
    return found.workers[_schedule->choose(found.workers.size(), found.voluntaryOptions)];
}

}  // namespace exploring
