#include "Engine/NolfaEngine.h"

#include <benchmark/benchmark.h>

namespace {

void makeService(benchmark::State &state)
{
    const nolfa::Bundle bundle = nolfa::Bundle::main();
    for (auto _ : state)
        benchmark::DoNotOptimize(nolfa::NolfaEngine::makeService(bundle));
}

void capability(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            nolfa::Fidelity::capability(nolfa::DocumentFormat::image, nolfa::DocumentFormat::markdown));
    }
}

} // namespace

BENCHMARK(makeService)->Unit(benchmark::kMicrosecond);
BENCHMARK(capability)->Unit(benchmark::kMicrosecond);
