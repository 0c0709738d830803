// Text conversion runs for every row of every list the viewer asks for.
#include <benchmark/benchmark.h>

#include <string>

#include "platform/platform.h"

static void BM_Utf8ToUtf16(benchmark::State& state) {
    std::string text;
    for (int i = 0; i < 288; ++i) text += "ExposureTime 1/250 Z\xC3\xBCrich \xE4\xB8\xAD\n";
    for (auto _ : state) benchmark::DoNotOptimize(platform::Utf8ToUtf16(text));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_Utf8ToUtf16);
