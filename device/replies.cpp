// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"

#include "device/protocol.h"
#include "image/hexrecord.h"

#include <array>

namespace device {

namespace {

constexpr int memoryCount = 5;

/// The bytes of one memory in the order in which they came.
class Bytes
{
public:
    void append(const QVector<quint8>& data) { m_bytes += data; }

    /// Little-endian; bytes that did not come are 0.
    [[nodiscard]] unsigned number(int position, int width) const
    {
        unsigned value = 0;
        for (int i = width - 1; i >= 0; --i) {
            value = (value << 8U) | m_bytes.value(position + i, 0);
        }
        return value;
    }

    /// Latin-1, ended by a zero byte.
    [[nodiscard]] QString text(int position, int width) const
    {
        QString text;
        for (const quint8 byte : m_bytes.mid(position, width)) {
            if (byte == 0) {
                break;
            }
            text.append(QLatin1Char(static_cast<char>(byte)));
        }
        return text;
    }

    [[nodiscard]] QString dotted(int position, int width) const
    {
        QStringList parts;
        for (const quint8 byte : m_bytes.mid(position, width)) {
            parts.append(QString::number(byte));
        }
        return parts.join(QLatin1Char('.'));
    }

    [[nodiscard]] QString dotted() const { return dotted(0, static_cast<int>(m_bytes.size())); }

private:
    QVector<quint8> m_bytes;
};

QString twoDigits(int number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

} // namespace

QVector<cMyReadRecord> readRecords(const QStringList& replies)
{
    QVector<cMyReadRecord> records;
    records.reserve(replies.size());
    MemoryType area = EEPROM;
    cMyHexRecord record;
    for (const QString& reply : replies) {
        if (const auto selected = memoryOfReply(reply)) {
            area = *selected;
        }
        if (reply.startsWith(QLatin1Char(':')) && reply != QLatin1String(":00000001FF\r\n") &&
            record.fromString(reply)) {
            records.append({area, record.offset(), record.data()});
        }
    }
    return records;
}

DeviceStatus readStatus(const QStringList& replies)
{
    std::array<Bytes, memoryCount> memories;
    for (const cMyReadRecord& record : readRecords(replies)) {
        memories.at(record.area).append(record.data);
    }
    const Bytes& eeprom = memories.at(EEPROM);
    const Bytes& flash = memories.at(FLASH);
    const Bytes& otp = memories.at(OTP);
    const Bytes& ram = memories.at(RAM);
    // The positions follow from the order of the regions asked for.
    DeviceStatus status;
    status.selfTest = static_cast<quint8>(ram.number(4, 1));
    status.maximumDepth = static_cast<int>(ram.number(0, 2));
    status.diveTime = static_cast<int>(ram.number(2, 2));
    status.serialNumber = static_cast<int>(otp.number(0, 2));
    status.hardwareVersion = otp.dotted(2, 4);
    status.memorySize = static_cast<int>(otp.number(6, 1));
    status.firmwareVersion = memories.at(ROM).dotted();
    status.voiceLanguage = flash.text(0, 16);
    status.voiceVersion = flash.dotted(16, 4);
    status.settingsVersion = eeprom.dotted(0, 4);
    status.settingsAuthor = eeprom.text(4, 16);
    status.settingsTitle = eeprom.text(20, 32);
    status.settingsDescription = eeprom.text(52, 512);
    return status;
}

QString depthText(int centimetres)
{
    return QString::number(centimetres / 100.0, 'f', 1) + QStringLiteral(" m");
}

QString durationText(int seconds)
{
    constexpr int minute = 60;
    constexpr int hour = 3600;
    const QString rest = twoDigits(seconds % minute);
    if (seconds < hour) {
        return QStringLiteral("%1:%2").arg(seconds / minute).arg(rest);
    }
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / hour)
        .arg(twoDigits(seconds % hour / minute), rest);
}

QStringList statusTexts(const QStringList& replies)
{
    const DeviceStatus status = readStatus(replies);
    // In the order of StatusText.
    return {
        QString::number(status.selfTest),
        depthText(status.maximumDepth),
        durationText(status.diveTime),
        QString::number(status.serialNumber),
        status.hardwareVersion,
        QString::number(status.memorySize),
        status.firmwareVersion,
        status.voiceLanguage,
        status.voiceVersion,
        status.settingsVersion,
        status.settingsAuthor,
        status.settingsTitle,
        status.settingsDescription,
    };
}

} // namespace device
