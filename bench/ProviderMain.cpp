#include <chrono>
#include <fstream>
#include <unistd.h>

#include "bench/Bench.h"

namespace {

using Clock = std::chrono::steady_clock;

// Of this process, in bytes.
double resident() {
    double total = 0, pages = 0;
    std::ifstream("/proc/self/statm") >> total >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// What loading the array took.
std::chrono::duration<double> loadTime;
double loadBytes;

void load() {
    const auto began = Clock::now();
    const double before = resident();
    Pegasus::DRAVEngine::_getInstance();
    loadTime = Clock::now() - began;
    loadBytes = resident() - before;
}

void startUp(benchmark::State& state) {
    for (auto _ : state) {
        state.SetIterationTime(loadTime.count());
    }
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(startUp)->UseManualTime()->Iterations(1);

// Bytes in place of seconds.
void memory(benchmark::State& state) {
    for (auto _ : state) {
    }
    state.counters["per_object"] = loadBytes;
}
BENCHMARK(memory)->Iterations(1);

} // namespace

// Loads the array before the first benchmark, so that no benchmark includes it.
int main(int argc, char** argv) {
    load();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
