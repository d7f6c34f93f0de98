#include "bench/workloads.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr long kTimes = 1000;  // operations in one measured call

void measure(benchmark::State& state, const bench::Workload& workload, bench::Side side) {
    if (workload.framework(kTimes) != workload.reference(kTimes)) {
        state.SkipWithError("the two sides do not do the same work");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(side(kTimes));
    state.SetItemsProcessed(state.iterations() * kTimes);
}

void add(const bench::Workload& workload, bench::Side side, const char* whose) {
    auto* added = benchmark::RegisterBenchmark(
        (std::string(workload.name) + "/" + whose).c_str(),
        [&workload, side](benchmark::State& state) { measure(state, workload, side); });
    added->MeasureProcessCPUTime();  // a generator works on a thread of its own
    if (workload.usesThreads) added->UseRealTime();
}

}  // namespace

int main(int argc, char** argv) {
    for (const bench::Workload& workload : bench::workloads()) {
        add(workload, workload.framework, "framework");
        add(workload, workload.reference, "plain");
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
