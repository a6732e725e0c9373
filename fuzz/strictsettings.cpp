// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/strictsettings.h"

#include "fuzz/support.h"
#include "image/memoryarea.h"

#include <algorithm>

using fuzz::expect;

namespace {

/// An area in which every byte is the same, with the file applied as the window does it.
QByteArray lenient(const QString& path, quint8 before)
{
    cMyMemoryArea area;
    area.setData(0, QVector<quint8>(image::settingsImageSize, before));
    expect(image::readSettingsFile(path, area), "any file can be read");
    quint8 byte = 0;
    expect(!area.data(image::settingsImageSize, &byte), "an image does not grow");
    return fuzz::imageOf(area);
}

/// The same by what the strict reader says.
QByteArray strict(const cMyStrictSettings& settings, quint8 before)
{
    QByteArray bytes(image::settingsImageSize, static_cast<char>(before));
    for (std::size_t i = 0; i < settings.bytes.size(); ++i) {
        if (settings.isGiven[i]) {
            bytes[static_cast<int>(i)] = static_cast<char>(settings.bytes.at(i));
        }
    }
    return bytes;
}

void checkFaults(const cMyStrictSettings& settings, const QByteArray& text)
{
    const qint64 lines =
        1 + std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
    expect(settings.faults.size() == std::min<qint64>(settings.faultCount, image::mostNamedFaults),
           "faults are named up to a number of them");
    qint64 last = 0;
    for (const cMySettingsFault& fault : settings.faults) {
        expect(!fault.reason.isEmpty() && fault.line <= lines, "a fault has a reason and a place");
        expect(fault.line == 0 || fault.line >= last, "faults come in their order");
        last = fault.line;
    }
    const auto more = settings.faultCount > settings.faults.size() ? 1 : 0;
    expect(image::faultLines(QStringLiteral("x"), settings).size() == settings.faults.size() + more,
           "every fault is a line");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const fuzz::InputFile file;
    static const QString path = file.path();
    file.fill(bytes, size);
    const cMyStrictSettings settings = image::readStrictSettings(path);
    checkFaults(settings, fuzz::bytesOf(bytes, size));
    if (settings.faultCount == 0) {
        for (const quint8 before : {quint8{0x00}, quint8{0xFF}}) {
            expect(strict(settings, before) == lenient(path, before),
                   "a file without a fault is the same to both readers");
        }
    }
    return 0;
}
