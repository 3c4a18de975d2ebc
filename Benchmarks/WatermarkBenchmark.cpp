#include "Watermark/WatermarkRenderer.h"

#include <benchmark/benchmark.h>

namespace {

/// A page of a book of 2,415 pages (Debian's r-doc-pdf), as the screen asks for it after every change.
void previewPage(benchmark::State &state)
{
    const std::filesystem::path book = "/usr/share/R/doc/manual/fullrefman.pdf";
    const nolfa::WatermarkSpec spec{.text = "CONFIDENTIEL", .placement = nolfa::WatermarkSpec::Placement::tiled};
    if (!std::filesystem::exists(book)) {
        state.SkipWithError("no book");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            nolfa::WatermarkRenderer::previewPage(static_cast<std::size_t>(state.range(0)), book, spec));
    }
}

} // namespace

BENCHMARK(previewPage)->Arg(0)->Arg(1200)->Arg(2400)->Unit(benchmark::kMillisecond);
