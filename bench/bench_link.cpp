// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"
#include "app/startup.h"
#include "bench/echopeer.h"
#include "bench/processortime.h"
#include "device/miolka.h"
#include "device/transferprogress.h"
#include "image/memoryarea.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QTimer>
#include <QTranslator>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>
#include <sys/resource.h>
#include <thread>

namespace {

const std::string record = ":100100002146017E17C20001FF5F16002148011988";
constexpr long slowPeer = 1000;
constexpr double microsecondsPerSecond = 1e6;

enum class Dialog { None, Shown };
enum class Log { Off, On };

QStringList recordLines(int count)
{
    QStringList lines;
    lines.reserve(count);
    for (int i = 0; i < count; ++i) {
        lines.append(QString::fromStdString(record));
    }
    return lines;
}

long peakBytes()
{
    constexpr long bytesPerKiB = 1024;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * bytesPerKiB;
}

/// A window with a link to a peer, and the longest time that the window did not answer.
class Bench
{
public:
    explicit Bench(long delay)
        : m_peer(delay), m_link(new cMyMiolka(&m_image, &m_window)),
          m_progress(new cMyTransferProgress(m_window))
    {
        QObject::connect(m_link, &cMyMiolka::portHeld, &m_loop, [this](const QString& port) {
            if (port.isEmpty()) {
                m_loop.quit();
            }
        });
        m_window.resize(400, 300);
        m_window.show();
        QEventLoop status;
        QObject::connect(m_link, &cMyMiolka::statusChanged, &status, &QEventLoop::quit);
        m_link->setPort(QString::fromStdString(m_peer.path()));
        status.exec();
    }

    void write(QStringList& lines, Dialog dialog, MemoryType area = EEPROM)
    {
        if (dialog == Dialog::Shown) {
            m_progress->open(QStringLiteral("Download.."));
            QObject::connect(m_link, &cMyMiolka::writeProgress, m_progress,
                             &cMyTransferProgress::show, Qt::UniqueConnection);
        }
        m_link->writeSettings(area, lines);
        m_loop.exec();
    }

    void read(QStringList& lines)
    {
        m_link->readSettings(EEPROM, lines);
        m_loop.exec();
    }

    [[nodiscard]] const std::string& path() const { return m_peer.path(); }

private:
    bench::EchoPeer m_peer;
    cMyMemoryArea m_image;
    QWidget m_window;
    cMyMiolka* m_link;
    cMyTransferProgress* m_progress;
    QEventLoop m_loop;
};

void bare(benchmark::State& state, long delay)
{
    const auto count = static_cast<int>(state.range(0));
    const bench::EchoPeer peer(delay);
    for ([[maybe_unused]] auto iteration : state) {
        const double seconds = bench::bareExchange(peer.path(), {record + "\r\n"}, count);
        if (seconds < 0) {
            state.SkipWithError("the line broke");
            return;
        }
        state.SetIterationTime(seconds / count);
    }
}

/// Whether each line is logged, as it is unless the user says otherwise.
void setLogging(Log log)
{
    QLoggingCategory::setFilterRules(log == Log::On ? QString()
                                                    : QStringLiteral("miolka.link.debug=false"));
}

void linked(benchmark::State& state, long delay, Dialog dialog, Log log)
{
    const auto count = static_cast<int>(state.range(0));
    setLogging(log);
    Bench bench(delay);
    QStringList lines = recordLines(count);
    double processor = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const double before = bench::processorTime(CLOCK_PROCESS_CPUTIME_ID);
        const auto start = std::chrono::steady_clock::now();
        bench.write(lines, dialog);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count() / count);
        processor = (bench::processorTime(CLOCK_PROCESS_CPUTIME_ID) - before) / count;
    }
    state.counters["processor_us"] = processor * microsecondsPerSecond;
}

/// The window reads and writes its settings; the longest gap between two ticks of a timer.
void unanswered(benchmark::State& state)
{
    setLogging(Log::Off);
    const bench::EchoPeer peer(0);
    MainWindow window;
    window.show();
    auto* link = window.findChild<cMyMiolka*>();
    QElapsedTimer sinceTick;
    qint64 longest = 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] {
        longest = std::max(longest, sinceTick.nsecsElapsed());
        sinceTick.start();
    });
    QEventLoop loop;
    QObject::connect(link, &cMyMiolka::statusChanged, &loop, &QEventLoop::quit);
    QObject::connect(link, &cMyMiolka::portHeld, &loop, [&](const QString& port) {
        if (port.isEmpty()) {
            loop.quit();
        }
    });
    link->setPort(QString::fromStdString(peer.path()));
    loop.exec();
    for ([[maybe_unused]] auto iteration : state) {
        longest = 0;
        sinceTick.start();
        ticks.start(1);
        window.writeSettingsToMiolka();
        loop.exec();
        window.readSettingsFromMiolka();
        loop.exec();
        link->readStatus();
        loop.exec();
        QCoreApplication::processEvents();
        ticks.stop();
        constexpr double nanoseconds = 1e9;
        state.SetIterationTime(static_cast<double>(longest) / nanoseconds);
    }
}

/// Bytes for each line that is written, uploaded or read, all lists together, at the highest.
/// Called in a process of its own.
int memory(const std::string& what, int count)
{
    setLogging(Log::Off);
    Bench bench(0);
    const auto transfer = [&](QStringList lines) {
        if (what == "read") {
            bench.read(lines);
        } else {
            bench.write(lines, Dialog::Shown, what == "upload" ? FLASH : EEPROM);
        }
    };
    transfer(recordLines(1));
    const long before = peakBytes();
    transfer(recordLines(count));
    std::printf("%ld\n", (peakBytes() - before) / count);
    return 0;
}

constexpr int manyLines = 20000;
constexpr int fewLines = 2000;

void once(benchmark::internal::Benchmark* each)
{
    each->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK_CAPTURE(bare, now, 0L)->Arg(manyLines)->Apply(once);
BENCHMARK_CAPTURE(linked, now, 0L, Dialog::None, Log::Off)->Arg(1000)->Arg(manyLines)->Apply(once);
BENCHMARK_CAPTURE(linked, now_log, 0L, Dialog::None, Log::On)->Arg(manyLines)->Apply(once);
BENCHMARK_CAPTURE(linked, now_dialog, 0L, Dialog::Shown, Log::Off)->Arg(manyLines)->Apply(once);
BENCHMARK_CAPTURE(bare, slow, slowPeer)->Arg(fewLines)->Apply(once);
BENCHMARK_CAPTURE(linked, slow, slowPeer, Dialog::None, Log::Off)->Arg(fewLines)->Apply(once);
BENCHMARK_CAPTURE(linked, slow_dialog, slowPeer, Dialog::Shown, Log::Off)
    ->Arg(fewLines)
    ->Apply(once);
BENCHMARK(unanswered)->Apply(once)->ComputeStatistics("max", [](const std::vector<double>& times) {
    return *std::max_element(times.cbegin(), times.cend());
});

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    bench::pinTo(0);
    app::prepare();
    QApplication application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    if (argc == 4 && std::string(argv[1]) == "memory") {
        return memory(argv[2], std::stoi(argv[3]));
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
