// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/process.h"

#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

void firstPaint(benchmark::State& state, const char* program)
{
    for ([[maybe_unused]] auto iteration : state) {
        const bench::Usage usage = bench::run({program});
        if (!usage.succeeded) {
            state.SkipWithError("the program failed");
            return;
        }
        state.SetIterationTime(usage.seconds);
    }
}

} // namespace

BENCHMARK_CAPTURE(firstPaint, miolkasoft, PROGRAM)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(firstPaint, empty, EMPTY_PROGRAM)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

int main(int argc, char* argv[])
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_PLUGIN_PATH", PLUGINS, 1);
    setenv("QT_QPA_GENERIC_PLUGINS", "firstpaint", 1);
    setenv("QT_LOGGING_RULES", "default.debug=false", 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
