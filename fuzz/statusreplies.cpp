// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "fuzz/lines.h"
#include "fuzz/support.h"

#include <QStringList>

#include <array>

using fuzz::expect;

namespace {

/// The bytes of each memory, one after another as they came.
using Memories = std::array<QVector<quint8>, 5>;

int number(const QVector<quint8>& bytes, int position)
{
    return bytes.value(position, 0) | bytes.value(position + 1, 0) << 8;
}

QString text(const QVector<quint8>& bytes, int position, int width)
{
    const QVector<quint8> field = bytes.mid(position, width);
    const auto end = field.indexOf(0);
    const QByteArray latin1 =
        fuzz::bytesOf(field.constData(), static_cast<std::size_t>(end < 0 ? field.size() : end));
    return fuzz::latin1(latin1);
}

/// The bytes that a dotted version was made of.
QVector<quint8> undotted(const QString& version)
{
    QVector<quint8> bytes;
    for (const QString& part : version.split(QLatin1Char('.'), Qt::SkipEmptyParts)) {
        bool isNumber = false;
        const uint byte = part.toUInt(&isNumber);
        expect(isNumber && byte <= 0xFF, "a version is made of bytes");
        bytes.append(static_cast<quint8>(byte));
    }
    return bytes;
}

/// The seconds that a duration was made of.
int seconds(const QString& duration)
{
    const QStringList parts = duration.split(QLatin1Char(':'));
    expect(parts.size() == 2 || parts.size() == 3, "a duration has minutes and seconds");
    int total = 0;
    for (const QString& part : parts) {
        const int value = part.toInt();
        const bool isHours = parts.size() == 3 && &part == &parts.first();
        expect(isHours ? value > 0 : value < 60, "only hours pass 59, and they are not 0");
        total = 60 * total + value;
    }
    return total;
}

int centimetres(const QString& depth)
{
    expect(depth.endsWith(QStringLiteral(" m")) && depth.count(QLatin1Char('.')) == 1 &&
               depth.indexOf(QLatin1Char('.')) == depth.size() - 4,
           "a depth has one decimal");
    return qRound(100 * depth.left(depth.size() - 2).toDouble());
}

void checkTexts(const QStringList& texts, const Memories& memories)
{
    using namespace device;
    const auto& [eeprom, flash, otp, ram, rom] = memories;
    expect(texts.at(SelfTestFlags) == QString::number(ram.value(4, 0)), "flags are a byte");
    expect(qAbs(centimetres(texts.at(MaximumDepth)) - number(ram, 0)) <= 5, "depth is rounded");
    expect(seconds(texts.at(DiveTime)) == number(ram, 2), "the dive time is whole");
    expect(texts.at(SerialNumber) == QString::number(number(otp, 0)),
           "a serial number is unsigned");
    expect(texts.at(MemorySize) == QString::number(otp.value(6, 0)), "a memory size is a byte");
    expect(undotted(texts.at(HardwareVersion)) == otp.mid(2, 4), "hardware version");
    expect(undotted(texts.at(FirmwareVersion)) == rom, "firmware version");
    expect(undotted(texts.at(VoiceVersion)) == flash.mid(16, 4), "voice version");
    expect(undotted(texts.at(SettingsVersion)) == eeprom.mid(0, 4), "settings version");
    expect(texts.at(VoiceLanguage) == text(flash, 0, 16), "language");
    expect(texts.at(SettingsAuthor) == text(eeprom, 4, 16), "author");
    expect(texts.at(SettingsTitle) == text(eeprom, 20, 32), "title");
    expect(texts.at(SettingsDescription) == text(eeprom, 52, 512), "description");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QStringList replies = fuzz::replies(fuzz::deviceLines(fuzz::bytesOf(bytes, size)));
    Memories memories;
    for (const cMyReadRecord& record : device::readRecords(replies)) {
        memories.at(record.area) += record.data;
    }
    const QStringList texts = device::statusTexts(replies);
    expect(texts.size() == device::StatusTextCount, "there is a text for each place");
    checkTexts(texts, memories);
    return 0;
}
