// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"
#include "app/startup.h"
#include "editor/settingslayout.h"

#include <QApplication>
#include <QTranslator>

#include <benchmark/benchmark.h>

namespace {

constexpr int recordCount = 64;
constexpr int recordLength = 16;

MainWindow* window = nullptr;

/// The default settings, and others that differ from them in every rule and number.
QByteArray imageWith(bool isOther)
{
    QByteArray image(recordCount * recordLength, '\0');
    for (const cMySettingsField& field : editor::settingsFields()) {
        image.replace(field.address, field.width, field.defaultBytes);
        const bool isNumber =
            field.encoding == FieldEncoding::Unsigned || field.encoding == FieldEncoding::Signed;
        if (isOther && isNumber) {
            image[field.address] = static_cast<char>(field.optionTable.isEmpty() ? 33 : 0);
        }
        if (isOther && field.encoding == FieldEncoding::Text) {
            image.replace(field.address, 6, QByteArray("other", 6));
        }
    }
    return image;
}

void receive(const QByteArray& image, int record)
{
    const int address = record * recordLength;
    const QByteArray part = image.mid(address, recordLength);
    QVector<quint8> bytes(part.size());
    std::copy(part.begin(), part.end(), bytes.begin());
    window->newDataRead(EEPROM, static_cast<quint32>(address), bytes);
}

/// Reading the settings from the device, again and again different ones: each record is followed
/// by a refresh of the three tabs.
void readDevice(benchmark::State& state)
{
    const QByteArray images[] = {imageWith(false), imageWith(true)};
    int round = 0;
    for ([[maybe_unused]] auto iteration : state) {
        ++round;
        for (int record = 0; record < recordCount; ++record) {
            receive(images[round % 2], record);
        }
    }
    state.SetItemsProcessed(state.iterations() * recordCount);
}

/// A refresh when nothing has changed.
void refresh(benchmark::State& state)
{
    const QByteArray image = imageWith(true);
    for ([[maybe_unused]] auto iteration : state) {
        receive(image, recordCount / 2);
    }
    state.SetItemsProcessed(state.iterations());
}

/// Everything changes at once, as when a file is opened.
void refreshAll(benchmark::State& state)
{
    const QByteArray images[] = {imageWith(false), imageWith(true)};
    int round = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const QByteArray& image = images[++round % 2];
        QVector<quint8> bytes(image.size());
        std::copy(image.begin(), image.end(), bytes.begin());
        window->newDataRead(EEPROM, 0, bytes);
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK(refresh)->Unit(benchmark::kMicrosecond);
BENCHMARK(readDevice)->Unit(benchmark::kMicrosecond);
BENCHMARK(refreshAll)->Unit(benchmark::kMicrosecond);

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    app::prepare();
    QApplication application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    MainWindow shown;
    shown.show();
    QCoreApplication::processEvents();
    window = &shown;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
