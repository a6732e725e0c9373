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
/// "Greatest" and "total" stand for those that dives only add to until the statistics are cleared.
enum ValueNumber {
    AbsolutePressure = 0,    ///< in mbar, as the next one; the first of a sensor's six values
    AtmosphericPressure = 8, ///< on the surface
    Temperature = 16,        ///< in tenths of a degree Celsius
    BatteryLevel = 31,       ///< 32768 would be full
    Depth = 32,              ///< in cm, as the next three
    DepthMaximum = 34,
    DepthAverage = 35,
    GreatestDepth = 37,
    DiveTime = 40, ///< in s, as all times
    SurfaceTime = 41,
    DescentTime = 42,
    BottomTime = 43,
    AscentTime = 44,
    GreatestDiveTime = 45,
    TotalDiveTime = 46,
    StatusDiveTime = 47, ///< always the same as GreatestDiveTime
    VerticalSpeed = 48,  ///< in cm/s, as all speeds: more than 0 on the way down
    AscentSpeedMaximum = 49,
    DescentSpeedMaximum = 50,
    AscentSpeedAverage = 51,
    DescentSpeedAverage = 52,
    GreatestAscentSpeed = 53,
    GreatestDescentSpeed = 54,
    Stopwatch0 = 56, ///< in s; timers 1 to 3 follow
};

/// The six values of a sensor (absolute and atmospheric pressure, temperature), counted from the
/// number of its reading.
enum SensorValue {
    Reading = 0,
    Minimum = 1, ///< of the dive, as the next two
    Maximum = 2,
    Average = 3,
    Least = 4, ///< since the statistics were cleared, as the next one
    Greatest = 5,
};

/// Values that there is room for; the highest number in use is lower.
constexpr int valueCount = 64;

/// What the device's own sensors tell while nobody simulates another.
constexpr qint16 roomTemperature = 200; ///< 20.0 degrees Celsius
constexpr qint16 batteryAtHand = 26214; ///< 80 %

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

    /// The whole memory; empty for a number that stands for none.
    [[nodiscard]] QByteArray bytes(MemoryType area) const;

    /// Replaces a whole memory; false, with nothing changed, if the size is not the memory's.
    bool setBytes(MemoryType area, const QByteArray& bytes);

    /// Overwrites bytes from address on; false, with nothing changed, if not all lie inside.
    bool write(MemoryType area, qint64 address, const QByteArray& bytes);

    /// Up to size bytes from address on; empty unless all of them lie inside.
    [[nodiscard]] QByteArray read(MemoryType area, qint64 address, int size) const;

    /// A measured value in RAM by its number, from 0 to valueCount - 1, in its own unit.
    [[nodiscard]] qint16 value(int number) const;
    void setValue(int number, qint16 value);

    /// All at once, which is what a dive reads and writes with each sample.
    [[nodiscard]] std::array<qint16, emulator::valueCount> values() const;
    void setValues(const std::array<qint16, emulator::valueCount>& values);

    /// Stores it in OTP, low byte first.
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
