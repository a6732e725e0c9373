// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/processortime.h"
#include "device/portselect.h"

#include <QApplication>
#include <QEventLoop>
#include <QSerialPortInfo>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <ctime>

/// The search for ports while no device is attached.
namespace {

constexpr int settlingTime = 4000; // milliseconds: right after its start it looks more often
constexpr int watchedTime = 20000; // milliseconds: two looks, and two hundred ticks

void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Asking the system for its ports, which the window waits for.
void look(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(QSerialPortInfo::availablePorts());
    }
}

/// A tick of the search when it is not worth asking, as nearly all are.
void tick(benchmark::State& state)
{
    cMyPortSelect select(nullptr);
    runFor(settlingTime);
    for ([[maybe_unused]] auto iteration : state) {
        QMetaObject::invokeMethod(&select, "updatePorts");
    }
}

/// The share of a processor that ticks and looks take together.
void share(benchmark::State& state)
{
    const cMyPortSelect select(nullptr);
    runFor(settlingTime);
    for ([[maybe_unused]] auto iteration : state) {
        const double before = bench::processorTime(CLOCK_PROCESS_CPUTIME_ID);
        runFor(watchedTime);
        constexpr double millisecondsPerSecond = 1000;
        constexpr double percent = 100;
        state.counters["percent"] = (bench::processorTime(CLOCK_PROCESS_CPUTIME_ID) - before) *
                                    millisecondsPerSecond / watchedTime * percent;
    }
}

} // namespace

BENCHMARK(look)->Unit(benchmark::kMillisecond);
// Few enough to be done before the next look is due.
BENCHMARK(tick)->Unit(benchmark::kMicrosecond)->Iterations(1000);
BENCHMARK(share)->Iterations(1);

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
