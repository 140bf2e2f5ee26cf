#include <benchmark/benchmark.h>

#include <tbb/global_control.h>

#include <cstdlib>
#include <exception>
#include <memory>

#include "benchmarks/CheckedCase.h"
#include "benchmarks/classification.h"
#include "benchmarks/copyBandwidth.h"

namespace {

using mox::benchmarks::Case;
using mox::benchmarks::CheckedCase;
using mox::benchmarks::ClassificationCase;

void time(benchmark::State& state, Case const& row, double bandwidth)
{
    std::unique_ptr<CheckedCase> checked;
    try {
        checked = std::make_unique<CheckedCase>(row);
    } catch (std::exception const& exception) {
        state.SkipWithError(exception.what());
        return;
    }
    for (auto _ : state) {
        checked->run();
    }
    using benchmark::Counter;
    auto const runs = static_cast<double>(state.iterations());
    double const bytes = static_cast<double>(checked->numOfBytes()) * runs;
    state.counters["voxel/s"] = Counter(static_cast<double>(checked->numOfVoxels()) * runs, Counter::kIsRate);
    state.counters["byte/s"] = Counter(bytes, Counter::kIsRate);
    state.counters["of_copy"] = Counter(bytes / bandwidth, Counter::kIsRate);
}

void timeClassification(benchmark::State& state, ClassificationCase const& row)
{
    std::function<void()> run;
    try {
        run = row.prepare();
        run(); // the output has its size from here on
    } catch (std::exception const& exception) {
        state.SkipWithError(exception.what());
        return;
    }
    for (auto _ : state) {
        run();
    }
    auto const voxels = static_cast<double>(row.size.numOfVoxels()) * static_cast<double>(state.iterations());
    state.counters["voxel/s"] = benchmark::Counter(voxels, benchmark::Counter::kIsRate);
}

std::size_t numOfThreads()
{
    char const* const text = std::getenv("MOXELCORE_BENCHMARK_THREADS");
    int const threads = text != nullptr ? std::atoi(text) : 0;
    return threads > 0 ? static_cast<std::size_t>(threads)
                       : tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism);
}

} // namespace

/// Times every row of the table. `of_copy` is the share of the rate at which the machine copies memory.
int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    tbb::global_control const threads(tbb::global_control::max_allowed_parallelism, numOfThreads());
    double const bandwidth = mox::benchmarks::copyBandwidth();
    benchmark::AddCustomContext("threads", std::to_string(numOfThreads()));
    benchmark::AddCustomContext("copy bandwidth, GB/s", std::to_string(bandwidth * 1e-9));
    for (Case const& row : mox::benchmarks::allCases()) {
        benchmark::RegisterBenchmark(row.name().c_str(), [row, bandwidth](benchmark::State& state) {
            time(state, row, bandwidth);
        })->UseRealTime();
    }
    for (ClassificationCase const& row : mox::benchmarks::classificationCases()) {
        benchmark::RegisterBenchmark(row.name.c_str(), [row](benchmark::State& state) {
            timeClassification(state, row);
        })->UseRealTime();
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
