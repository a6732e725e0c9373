// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/process.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void wholeRun(benchmark::State& state, const std::vector<std::string>& command)
{
    for ([[maybe_unused]] auto iteration : state) {
        const bench::Usage usage = bench::run(command);
        if (!usage.succeeded) {
            state.SkipWithError("the program failed");
            return;
        }
        state.SetIterationTime(usage.seconds);
    }
}

void add(const char* name, const std::vector<std::string>& command)
{
    benchmark::RegisterBenchmark(name, wholeRun, command)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
}

} // namespace

int main(int argc, char* argv[])
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_PLUGIN_PATH", PLUGINS, 1);
    setenv("QT_QPA_GENERIC_PLUGINS", "firstpaint", 1);
    setenv("QT_LOGGING_RULES", "default.debug=false", 1);
    // The windows end at their first picture, the other program when it has answered.
    add("firstPaint/miolkasoft", {PROGRAM});
    add("firstPaint/empty", {EMPTY_PROGRAM});
    add("status", {COMMAND_LINE_PROGRAM, "--emulator", "status"});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
