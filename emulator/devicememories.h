// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DEVICEMEMORIES_H
#define MIOLKA_EMULATOR_DEVICEMEMORIES_H

#include "image/memorytype.h"

#include <QByteArray>

#include <array>
#include <optional>

namespace emulator {

constexpr int memoryCount = 5;

/// Numbers of measured values that the device's parts name; resources/models/msgCb2.csv has all.
enum ValueNumber {
    AbsolutePressure = 0,
    AtmosphericPressure = 8, ///< in mbar
    Depth = 32,              ///< in cm
    GreatestDepth = 37,      ///< in cm
    GreatestDiveTime = 45,   ///< in s
    TotalDiveTime = 46,      ///< in s
    StatusDiveTime = 47,     ///< always the same as GreatestDiveTime
    Stopwatch0 = 56,         ///< in s; timers 1 to 3 follow
};

/// Values that there is room for; the highest number in use is lower.
constexpr int valueCount = 64;

constexpr int selfTestAddress = 1068; ///< in RAM, one byte

/// Where in RAM the measured value with this number lies, 16 bits little-endian.
[[nodiscard]] constexpr int valueAddress(int number) noexcept
{
    constexpr int start = 0x0100;
    return start + 2 * number;
}

/// The old settings with the records of a settings file put over it; nothing if there is no such
/// file. Both have the size of the EEPROM.
[[nodiscard]] std::optional<QByteArray> settingsOver(const QByteArray& old, const QString& path);

/// Bytes in a memory; 0 for a number that stands for none.
[[nodiscard]] int memorySize(MemoryType area) noexcept;

} // namespace emulator

/// The bytes of all memories of one device. Copies share what was not written since.
class cMyDeviceMemories
{
public:
    /// As the device is delivered: the built-in settings, and no sounds but a library's name.
    cMyDeviceMemories();

    [[nodiscard]] QByteArray bytes(MemoryType area) const;

    /// Replaces a whole memory; false, with nothing changed, if the size is not the memory's.
    bool setBytes(MemoryType area, const QByteArray& bytes);

    /// Overwrites bytes from address on; false, with nothing changed, if not all lie inside.
    bool write(MemoryType area, qint64 address, const QByteArray& bytes);

    /// Up to size bytes from address on; empty unless all of them lie inside.
    [[nodiscard]] QByteArray read(MemoryType area, qint64 address, int size) const;

    [[nodiscard]] qint16 value(int number) const;
    void setValue(int number, qint16 value);

    void setSerialNumber(quint16 number);

    /// Gives RAM the contents that it has when the device is switched on.
    void powerOn();

    /// Zeroes the measured values, all but the surface pressure.
    void clearStatistics();

private:
    void mirrorDiveTime();
    [[nodiscard]] bool contains(MemoryType area, qint64 address, int size) const;

    std::array<QByteArray, emulator::memoryCount> m_bytes;
};

#endif
