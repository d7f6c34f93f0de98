#include "tests/support/exploring/exploration.h"

#include "platform/simulated/world.h"
#include "tests/support/exploring/scheduler.h"

#include <cstdio>
#include <string_view>

namespace exploring {
namespace {

void playOnce(const std::string& name, Schedule& schedule, const std::function<void()>& scene) {
    auto& world = platform::simulated::world();
    const int mutexes = world.openMutexes;
    const int threads = world.openThreads;
    world.reset();
    Scheduler::instance().play(name, schedule, [&] {
        scene();
        require(world.openMutexes == mutexes, "every mutex of the scene is closed at its end");
        require(world.openThreads == threads, "every thread handle is closed at its end");
    });
}

long playAtRandom(const std::string& name, const std::function<void()>& scene) {
    const std::uint64_t first = options().firstSeed;
    for (std::uint64_t seed = first; seed < first + options().seeds; ++seed) {
        Schedule schedule = Schedule::random(seed);
        playOnce(name, schedule, scene);
    }
    return static_cast<long>(options().seeds);
}

long playAll(const std::string& name, int preemptions, const std::function<void()>& scene) {
    Schedule schedule;
    long played = 0;
    do {
        playOnce(name, schedule, scene);
        ++played;
    } while (schedule.advance(preemptions));
    return played;
}

}  // namespace

Options& options() {
    static Options given;
    return given;
}

void readOptions(int& argumentCount, char** arguments) {
    int kept = 0;
    for (int index = 0; index < argumentCount; ++index) {
        const std::string_view argument(arguments[index]);
        const auto valueOf = [&](std::string_view flag) {
            return argument.starts_with(flag) ? std::string(argument.substr(flag.size())) : "";
        };
        if (argument.starts_with("--replay=")) {
            options().replay = valueOf("--replay=");
            options().isReplay = true;
        } else if (argument.starts_with("--random=")) {
            options().seeds = std::stoull(valueOf("--random="));
        } else if (argument.starts_with("--seed=")) {
            options().firstSeed = std::stoull(valueOf("--seed="));
        } else {
            arguments[kept++] = arguments[index];
        }
    }
    argumentCount = kept;
}

long everySchedule(const std::string& name, int preemptions, const std::function<void()>& scene) {
    long played = 1;
    if (options().isReplay) {
        Schedule schedule = Schedule::parsed(options().replay);
        playOnce(name, schedule, scene);
    } else if (options().seeds > 0) {
        played = playAtRandom(name, scene);
    } else {
        played = playAll(name, preemptions, scene);
    }
    std::printf("%8ld schedules of %s\n", played, name.c_str());
    std::fflush(stdout);
    return played;
}

void require(bool isMet, const std::string& requirement) {
    if (!isMet) Scheduler::instance().fail("not met: " + requirement);
}

int locksHeld() {
    const Worker* const current = Scheduler::instance().current();
    return current != nullptr ? current->locksHeld : 0;
}

}  // namespace exploring
