// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/process.h"
#include "image/hexcodec.h"
#include "image/hexrecord.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QByteArray>
#include <QString>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int recordCount = 500000;
constexpr int recordBytes = 16;

std::string directory()
{
    const char* const given = std::getenv("MIOLKA_BENCH_DIR");
    return given == nullptr ? "." : given;
}

std::string input()
{
    return directory() + "/input.hex";
}

/// Eight megabytes as records of the public format, 22 MB of text.
bool writeInput()
{
    std::FILE* const file = std::fopen(input().c_str(), "w");
    if (file == nullptr) {
        return false;
    }
    quint32 state = 1004;
    for (int record = 0; record < recordCount; ++record) {
        const int address = record * recordBytes;
        if ((address & 0xFFFF) == 0 && address != 0) {
            const int segment = address >> 16;
            std::fprintf(file, ":02000004%04X%02X\n", static_cast<unsigned>(segment),
                         static_cast<unsigned>(-(6 + (segment >> 8) + segment)) & 0xFFU);
        }
        QVector<quint8> data(recordBytes);
        for (quint8& byte : data) {
            state = state * 1664525U + 1013904223U;
            byte = static_cast<quint8>(state >> 24);
        }
        const cMyHexRecord line(static_cast<unsigned short>(address), data);
        std::fprintf(file, "%s\n", line.toString().toLatin1().constData());
    }
    std::fputs(":00000001FF\n", file);
    return std::fclose(file) == 0;
}

void wholeProcess(benchmark::State& state, const std::vector<std::string>& command)
{
    long peak = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const bench::Usage usage = bench::run(command);
        if (!usage.succeeded) {
            state.SkipWithError("the command failed");
            return;
        }
        state.SetIterationTime(usage.seconds);
        peak = std::max(peak, usage.peakKiB);
    }
    state.counters["peak_KiB"] = static_cast<double>(peak);
}

void addProcess(const char* name, const std::vector<std::string>& command)
{
    benchmark::RegisterBenchmark(name, wholeProcess, command)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
}

const QString line = QStringLiteral(":100100002146017E17C20001FF5F16002148011988");

void decode(benchmark::State& state)
{
    const QByteArray text = line.toLatin1();
    const std::string_view view(text.constData(), static_cast<std::size_t>(text.size()));
    cMyRecordFields fields;
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(image::decodeRecord(view, fields));
        benchmark::DoNotOptimize(image::isChecksumRight(fields));
    }
}

void recordFromString(benchmark::State& state)
{
    cMyHexRecord record;
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(record.fromString(line));
    }
}

void recordToString(benchmark::State& state)
{
    cMyHexRecord record;
    record.fromString(line);
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(record.toString());
    }
}

void settingsFile(benchmark::State& state)
{
    cMyMemoryArea area;
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(
            image::readSettingsFile(QStringLiteral(":/pliki/clear.mio"), area));
    }
}

} // namespace

BENCHMARK(decode);
BENCHMARK(recordFromString);
BENCHMARK(recordToString);
BENCHMARK(settingsFile);

int main(int argc, char* argv[])
{
    if (!writeInput()) {
        std::fprintf(stderr, "cannot write %s\n", input().c_str());
        return 1;
    }
    const std::string out = directory();
    addProcess("check/miolka", {HEXTOOL, input()});
    addProcess("check/objcopy",
               {"objcopy", "-I", "ihex", "-O", "binary", input(), out + "/objcopy.bin"});
    addProcess("check/srec_cat",
               {"srec_cat", input(), "-intel", "-o", out + "/srec_cat.bin", "-binary"});
    addProcess("print/miolka", {HEXTOOL, input(), out + "/miolka.hex"});
    addProcess("print/objcopy",
               {"objcopy", "-I", "ihex", "-O", "ihex", input(), out + "/objcopy.hex"});
    addProcess("print/srec_cat", {"srec_cat", input(), "-intel", "-o", out + "/srec_cat.hex",
                                  "-intel", "-line-length=44"});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
