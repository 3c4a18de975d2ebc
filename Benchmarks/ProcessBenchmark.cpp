#include "Engine/ProcessRunner.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

/// One child from start to end.
void startChild(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(nolfa::ProcessRunner::run("/bin/true", {}, {.timeout = 60, .label = "x"}, {}));
}

/// Bytes through a child that returns what it is fed.
void feedChild(benchmark::State &state)
{
    const std::string input(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            nolfa::ProcessRunner::run("/bin/cat", {}, {.stdin = input, .timeout = 60, .label = "x"}, {}));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(startChild)->Unit(benchmark::kMicrosecond);
BENCHMARK(feedChild)->Arg(1 << 10)->Arg(1 << 20)->Arg(1 << 26)->Unit(benchmark::kMicrosecond);
