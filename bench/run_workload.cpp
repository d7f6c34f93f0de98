#include "bench/workloads.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

// Runs one side of one workload, for a profiler to watch: run_workload NUMBER framework|plain
// TIMES. Without arguments, lists number, name and aim of each workload whose instructions can
// be counted.
int main(int argc, char** argv) {
    const auto workloads = bench::workloads();
    if (argc != 4) {
        for (std::size_t i = 0; i < workloads.size(); ++i) {
            if (workloads[i].usesThreads) continue;
            std::printf("%zu|%s|%g\n", i, workloads[i].name, workloads[i].instructionAim);
        }
        return 0;
    }
    const auto number = static_cast<std::size_t>(std::strtoul(argv[1], nullptr, 10));
    if (number >= workloads.size()) return 1;
    const bench::Workload& workload = workloads[number];
    const bool plain = std::strcmp(argv[2], "plain") == 0;
    const std::uint64_t sum =
        (plain ? workload.reference : workload.framework)(std::strtol(argv[3], nullptr, 10));
    std::printf("%llu\n", static_cast<unsigned long long>(sum));
    return 0;
}
