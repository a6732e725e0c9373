// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/devicememories.h"

#include "device/replies.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QFile>

#include <algorithm>

namespace emulator {

namespace {

/// By the numbers of MemoryType.
constexpr std::array<int, memoryCount> memorySizes = {image::settingsImageSize, 8 * 1024 * 1024, 64,
                                                      4096, 256};

constexpr int languageAddress = 0xFFE0;
constexpr int languageSize = 16;
constexpr int libraryVersionAddress = 0xFFFC;
constexpr int serialNumberAddress = 0;
constexpr int hardwareVersionAddress = 2;
constexpr int memorySizeAddress = 6;
constexpr int firmwareVersionAddress = 252;

struct StartValue
{
    int number;
    qint16 value;
};

/// What a device that has dived a little shows in its status.
constexpr std::array<StartValue, 7> startValues = {{
    {AbsolutePressure, 1013},
    {AtmosphericPressure, 1013},
    {Temperature, roomTemperature},
    {BatteryLevel, batteryAtHand},
    {GreatestDepth, 1840},
    {GreatestDiveTime, 2345},
    {TotalDiveTime, 8765},
}};

/// The number in two bytes, little-endian.
qint16 numberIn(const QByteArray& bytes, int position)
{
    const auto low = static_cast<quint8>(bytes.at(position));
    const auto high = static_cast<quint8>(bytes.at(position + 1));
    return static_cast<qint16>(low | (high << 8));
}

QByteArray littleEndian(quint16 number)
{
    QByteArray bytes;
    bytes.append(static_cast<char>(number & 0xFFU));
    bytes.append(static_cast<char>(number >> 8U));
    return bytes;
}

QByteArray defaultSettings()
{
    const QByteArray zeros(image::settingsImageSize, '\0');
    return settingsOver(zeros, QStringLiteral(":/pliki/clear.mio")).value_or(zeros);
}

QByteArray soundLibrary()
{
    QByteArray bytes(memorySizes[FLASH], '\xFF');
    const QByteArray language = QByteArray("English").leftJustified(languageSize, '\0');
    bytes.replace(languageAddress, language.size(), language);
    const QByteArray version("\x01\x00\x04\x00", 4);
    bytes.replace(libraryVersionAddress, version.size(), version);
    return bytes;
}

} // namespace

std::optional<QByteArray> settingsOver(const QByteArray& old, const QString& path)
{
    cMyMemoryArea area;
    area.setData(0, QVector<quint8>(old.cbegin(), old.cend()));
    if (!image::readSettingsFile(path, area)) {
        return std::nullopt;
    }
    const QVector<quint8> bytes = area.data(0, image::settingsImageSize);
    QByteArray settings(bytes.size(), '\0');
    std::copy(bytes.cbegin(), bytes.cend(), settings.begin());
    return settings;
}

int memorySize(MemoryType area) noexcept
{
    const auto index = static_cast<std::size_t>(area);
    return index < memorySizes.size() ? memorySizes[index] : 0;
}

} // namespace emulator

using namespace emulator;

cMyDeviceMemories::cMyDeviceMemories()
{
    static const QByteArray library = soundLibrary();
    static const QByteArray settings = defaultSettings();
    constexpr quint16 firstSerialNumber = 1001;
    constexpr char megabytes = 8;
    m_bytes[EEPROM] = settings;
    m_bytes[FLASH] = library;
    m_bytes[OTP] = QByteArray(memorySize(OTP), '\0');
    setSerialNumber(firstSerialNumber);
    write(OTP, hardwareVersionAddress, QByteArray("\x01\x02\x00\x00", 4));
    write(OTP, memorySizeAddress, QByteArray(1, megabytes));
    m_bytes[ROM] = QByteArray(memorySize(ROM), '\0');
    write(ROM, firmwareVersionAddress, QByteArray("\x01\x00\x04\x00", 4));
    powerOn();
}

QByteArray cMyDeviceMemories::bytes(MemoryType area) const
{
    return memorySize(area) == 0 ? QByteArray() : m_bytes.at(area);
}

bool cMyDeviceMemories::setBytes(MemoryType area, const QByteArray& bytes)
{
    if (memorySize(area) == 0 || bytes.size() != memorySize(area)) {
        return false;
    }
    m_bytes.at(area) = bytes;
    if (area == RAM) {
        mirrorDiveTime();
    }
    return true;
}

bool cMyDeviceMemories::contains(MemoryType area, qint64 address, int size) const
{
    return address >= 0 && size >= 0 && address + size <= memorySize(area);
}

bool cMyDeviceMemories::write(MemoryType area, qint64 address, const QByteArray& bytes)
{
    if (!contains(area, address, static_cast<int>(bytes.size()))) {
        return false;
    }
    m_bytes.at(area).replace(static_cast<QByteArray::size_type>(address), bytes.size(), bytes);
    if (area == RAM) {
        mirrorDiveTime();
    }
    return true;
}

void cMyDeviceMemories::mirrorDiveTime()
{
    const QByteArray longest = read(RAM, valueAddress(GreatestDiveTime), 2);
    m_bytes[RAM].replace(valueAddress(StatusDiveTime), longest.size(), longest);
}

QByteArray cMyDeviceMemories::read(MemoryType area, qint64 address, int size) const
{
    return contains(area, address, size) ? m_bytes.at(area).mid(static_cast<int>(address), size)
                                         : QByteArray();
}

qint16 cMyDeviceMemories::value(int number) const
{
    const QByteArray bytes = read(RAM, valueAddress(number), 2);
    return bytes.isEmpty() ? qint16(0) : numberIn(bytes, 0);
}

void cMyDeviceMemories::setValue(int number, qint16 value)
{
    write(RAM, valueAddress(number), littleEndian(static_cast<quint16>(value)));
}

std::array<qint16, valueCount> cMyDeviceMemories::values() const
{
    const QByteArray bytes = read(RAM, valueAddress(0), 2 * valueCount);
    std::array<qint16, valueCount> values{};
    for (int number = 0; number < valueCount; ++number) {
        values.at(static_cast<std::size_t>(number)) = numberIn(bytes, 2 * number);
    }
    return values;
}

void cMyDeviceMemories::setValues(const std::array<qint16, valueCount>& values)
{
    QByteArray bytes;
    bytes.reserve(2 * valueCount);
    for (const qint16 value : values) {
        bytes += littleEndian(static_cast<quint16>(value));
    }
    write(RAM, valueAddress(0), bytes);
}

void cMyDeviceMemories::setSerialNumber(quint16 number)
{
    write(OTP, serialNumberAddress, littleEndian(number));
}

void cMyDeviceMemories::powerOn()
{
    m_bytes[RAM] = QByteArray(memorySize(RAM), '\0');
    for (const StartValue& start : startValues) {
        setValue(start.number, start.value);
    }
    write(RAM, selfTestAddress, QByteArray(1, static_cast<char>(device::Works)));
}

void cMyDeviceMemories::clearStatistics()
{
    const qint16 surface = value(AtmosphericPressure);
    write(RAM, valueAddress(0), QByteArray(2 * valueCount, '\0'));
    setValue(AtmosphericPressure, surface);
}
