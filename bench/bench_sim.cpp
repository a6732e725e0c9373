// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"
#include "bench/echopeer.h"
#include "bench/processortime.h"
#include "device/protocol.h"
#include "image/hexrecord.h"
#include "sim/simwidget.h"
#include "sim/simworker.h"

#include <QApplication>
#include <QEventLoop>
#include <QLabel>
#include <QPushButton>
#include <QThread>
#include <QTranslator>

#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr long slowPeer = 1000;
constexpr double microsecondsPerSecond = 1e6;

/// The peer has processor 1. Where there is no third one for the window it shares the worker's:
/// what its refreshes cost the worker shows, and the peer is as fast as it is for the bare loop.
constexpr unsigned workerProcessor = 0;
constexpr unsigned windowProcessor = 2;

/// The lines of one cycle at the surface, where the pressure of the peer is 0.
std::vector<std::string> cycleLines()
{
    constexpr unsigned short first = 0x0100;
    constexpr int recordSize = 16;
    constexpr int recordCount = 8;
    const QString end = cMyHexRecord(0, {}).toString();
    QStringList lines;
    for (int i = 0; i < recordCount; ++i) {
        const auto address = static_cast<unsigned short>(first + recordSize * i);
        lines += cMyHexRecord(address, QVector<unsigned char>(recordSize, 0)).toString();
    }
    lines << end << device::simulationWord << device::memoryWord(RAM) << device::writeWord
          << cMyHexRecord(first, {0, 0}).toString() << end << device::simulationWord
          << device::memoryWord(RAM) << device::readWord;
    std::vector<std::string> ended;
    for (const QString& line : qAsConst(lines)) {
        ended.push_back(line.toStdString() + device::lineEnd);
    }
    return ended;
}

/// A moment in a thread: by the clock and by what the thread has had of its processor.
struct Moment
{
    std::chrono::steady_clock::time_point time = std::chrono::steady_clock::now();
    double processor = bench::processorTime(CLOCK_THREAD_CPUTIME_ID);

    [[nodiscard]] double since(const Moment& start) const
    {
        return std::chrono::duration<double>(time - start.time).count();
    }
};

/// Ties the worker that is to be measured to its processor and takes the time of its cycles, in
/// the worker's own thread: what the window gets is late by as much as the window is.
class Cycles
{
public:
    explicit Cycles(int count) : m_count(count) { current = this; }
    ~Cycles() { current = nullptr; }
    Q_DISABLE_COPY_MOVE(Cycles)

    /// Called in the worker's thread, before its work begins.
    void watch(cMySimWorker* worker)
    {
        bench::pinTo(workerProcessor);
        QObject::connect(
            worker, &cMySimWorker::valuesChanged, worker, [this, worker] { note(worker); },
            Qt::DirectConnection);
    }

    /// The rest is for when the work has ended.
    [[nodiscard]] bool isComplete() const { return m_noted > m_count; }
    [[nodiscard]] double secondsEach() const { return m_last.since(m_first) / m_count; }
    [[nodiscard]] double processorEach() const
    {
        return (m_last.processor - m_first.processor) / m_count;
    }

    static Cycles* current;

private:
    void note(cMySimWorker* worker)
    {
        if (m_noted == 0) {
            m_first = Moment();
        } else if (m_noted == m_count) {
            m_last = Moment();
            worker->stopWork();
        }
        ++m_noted;
    }

    int m_count;
    int m_noted = 0;
    Moment m_first;
    Moment m_last;
};

Cycles* Cycles::current = nullptr;

/// Sees a worker in its own thread, whoever has made it, when it is told to begin.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::MetaCall && Cycles::current != nullptr) {
            if (auto* worker = qobject_cast<cMySimWorker*>(receiver)) {
                Cycles::current->watch(worker);
            }
        }
        return QApplication::notify(receiver, event);
    }
};

/// Sees whether a widget is painted.
class Paints : public QObject
{
public:
    explicit Paints(QObject* widget) { widget->installEventFilter(this); }

    [[nodiscard]] bool hasSome() const { return m_hasSome; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        m_hasSome = m_hasSome || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_hasSome = false;
};

void report(benchmark::State& state, const Cycles& cycles)
{
    if (!cycles.isComplete()) {
        state.SkipWithError("the line broke");
        return;
    }
    state.SetIterationTime(cycles.secondsEach());
    state.counters["processor_us"] = cycles.processorEach() * microsecondsPerSecond;
}

void bare(benchmark::State& state, long delay)
{
    const auto count = static_cast<int>(state.range(0));
    const bench::EchoPeer peer(delay, bench::Values::Counted);
    const std::vector<std::string> lines = cycleLines();
    for ([[maybe_unused]] auto iteration : state) {
        const double before = bench::processorTime(CLOCK_THREAD_CPUTIME_ID);
        const double seconds = bench::bareExchange(peer.path(), lines, count);
        if (seconds < 0) {
            state.SkipWithError("the line broke");
            return;
        }
        state.SetIterationTime(seconds / count);
        state.counters["processor_us"] = (bench::processorTime(CLOCK_THREAD_CPUTIME_ID) - before) /
                                         count * microsecondsPerSecond;
    }
}

/// The worker in a thread, and nobody who listens to it.
void alone(benchmark::State& state, long delay)
{
    const bench::EchoPeer peer(delay, bench::Values::Counted);
    const QString port = QString::fromStdString(peer.path());
    for ([[maybe_unused]] auto iteration : state) {
        Cycles cycles(static_cast<int>(state.range(0)));
        QThread thread;
        cMySimWorker worker;
        worker.moveToThread(&thread);
        QEventLoop loop;
        QObject::connect(&worker, &cMySimWorker::finished, &loop, &QEventLoop::quit);
        thread.start();
        QMetaObject::invokeMethod(&worker, [&] { worker.doWork(port, 0); });
        loop.exec();
        thread.quit();
        thread.wait();
        report(state, cycles);
    }
}

/// The page of the window, which shows the numbers of each cycle.
void shown(benchmark::State& state, long delay)
{
    const auto count = static_cast<int>(state.range(0));
    const bench::EchoPeer peer(delay, bench::Values::Counted);
    cMySimWidget panel;
    panel.setPortName(QString::fromStdString(peer.path()));
    panel.show();
    QCoreApplication::processEvents();
    QEventLoop loop;
    QObject::connect(&panel, &cMySimWidget::simulationInProgress, &loop, [&loop](bool isGoing) {
        if (!isGoing) {
            loop.quit();
        }
    });
    auto* label = panel.findChild<QLabel*>(QStringLiteral("simAbsP"));
    const QString before = label->text();
    const Paints paints(label);
    for ([[maybe_unused]] auto iteration : state) {
        Cycles cycles(count);
        const double start = bench::processorTime(CLOCK_THREAD_CPUTIME_ID);
        panel.findChild<QPushButton*>(QStringLiteral("pbStartSim"))->click();
        bench::pinTo(windowProcessor);
        loop.exec();
        bench::pinTo(workerProcessor);
        state.counters["window_us"] =
            (bench::processorTime(CLOCK_THREAD_CPUTIME_ID) - start) / count * microsecondsPerSecond;
        report(state, cycles);
    }
    if (!paints.hasSome() || label->text() == before) {
        state.SkipWithError("nothing was shown");
    }
}

constexpr int manyCycles = 2000;
constexpr int fewCycles = 100;

void once(benchmark::internal::Benchmark* each)
{
    each->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK_CAPTURE(bare, now, 0L)->Arg(manyCycles)->Apply(once);
BENCHMARK_CAPTURE(alone, now, 0L)->Arg(manyCycles)->Apply(once);
BENCHMARK_CAPTURE(shown, now, 0L)->Arg(manyCycles)->Apply(once);
BENCHMARK_CAPTURE(bare, slow, slowPeer)->Arg(fewCycles)->Apply(once);
BENCHMARK_CAPTURE(alone, slow, slowPeer)->Arg(fewCycles)->Apply(once);
BENCHMARK_CAPTURE(shown, slow, slowPeer)->Arg(fewCycles)->Apply(once);

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    bench::pinTo(workerProcessor);
    app::prepare();
    const Application application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
