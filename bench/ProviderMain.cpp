#include <benchmark/benchmark.h>

#include "engine/DRAVEngine.h"

// The array is loaded before the first benchmark, and so is a part of none.
int main(int argc, char** argv) {
    Pegasus::DRAVEngine::_getInstance();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
