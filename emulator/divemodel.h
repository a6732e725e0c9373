// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DIVEMODEL_H
#define MIOLKA_EMULATOR_DIVEMODEL_H

#include "emulator/divemoment.h"

#include <deque>

class cMyMemoryArea;

/// Which temperature the density of the water goes by; resources/models/parCb4.csv.
enum class TemperatureSource : quint8 { Constant = 0, Minimum = 1, Average = 2, Current = 3 };

/// Least, greatest and mean of what was added.
class cMyValueRange
{
public:
    /// Counts a value in.
    void add(qint16 value);

    /// Whether nothing was added since it was made.
    [[nodiscard]] bool isEmpty() const { return m_count == 0; }

    /// All three are 0 while nothing was added; the mean is rounded to the nearest number.
    [[nodiscard]] qint16 minimum() const { return m_minimum; }
    [[nodiscard]] qint16 maximum() const { return m_maximum; }
    [[nodiscard]] qint16 average() const;

private:
    qint16 m_minimum = 0;
    qint16 m_maximum = 0;
    qint64 m_sum = 0;
    qint64 m_count = 0;
};

/// What the device makes of its readings, sample by sample: depth, speed, times, and the statistics
/// of them. It knows no clock; docs/virtual-device.md has every value in plain words.
class cMyDiveModel
{
public:
    /// The settings as they are in the EEPROM. What is in the values for "since the statistics were
    /// cleared" is continued.
    cMyDiveModel(const cMyMemoryArea& settings, const cMyDiveValues& start);

    /// When sample number index is due, in ms after the first, which has number 0. Rounded down
    /// from the exact time, so that nothing adds up over a long simulation.
    [[nodiscard]] qint64 sampleTime(qint64 index) const;

    /// Sample number index, at its time; greater than that of the one before. Read from values are
    /// absolute and surface pressure, temperature and, passed on only, all that is not computed
    /// here.
    [[nodiscard]] cMyDiveMoment sample(qint64 index, const cMyDiveValues& values);

    /// The absolute pressure, in mbar, with which the next sample comes nearest to a depth in m;
    /// may be more than a sensor of 16 bits measures. Read from values are surface pressure and
    /// temperature.
    [[nodiscard]] double pressureAt(double depth, const cMyDiveValues& values) const;

    /// Everything that adds up begins anew with the next sample. A dive that is on goes on.
    void clearStatistics();

private:
    struct Settings
    {
        explicit Settings(const cMyMemoryArea& area);

        /// As many as come nearest to a second, at least one.
        [[nodiscard]] std::size_t samplesInASecond() const;

        int samplingDivider; ///< samples come every so many 150ths of a second
        int diveThreshold;   ///< in cm, as the next one
        int surfacingThreshold;
        int ascentThreshold; ///< in cm/s, as the next one
        int bottomThreshold;
        int salinity; ///< in permille
        TemperatureSource temperatureSource;
        int fixedTemperature; ///< in tenths of a degree Celsius
        double gravity;       ///< in m/s^2
    };

    struct PastDepth
    {
        qint64 index; ///< of the sample
        double depth; ///< in cm, not rounded
    };

    /// What restarts with a dive.
    struct Statistics
    {
        cMyValueRange absolutePressure;
        cMyValueRange atmosphericPressure;
        cMyValueRange temperature;
        cMyValueRange depth;
        cMyValueRange ascentSpeed;
        cMyValueRange descentSpeed;
        std::array<qint64, 3> phaseTime{}; ///< in ms, by DivePhase
    };

    static void addReadings(Statistics& statistics, const cMyDiveValues& values);

    /// In degrees Celsius.
    [[nodiscard]] double densityTemperature(const Statistics& statistics,
                                            const cMyDiveValues& values) const;

    /// In mbar for each metre.
    [[nodiscard]] double pressurePerMetre(const Statistics& statistics,
                                          const cMyDiveValues& values) const;

    /// In cm, not rounded, as are the next two: they look whether the dive ends or begins, and
    /// return the depth by the statistics as they are then.
    [[nodiscard]] double depth(const Statistics& statistics, const cMyDiveValues& values) const;
    double stayUnderwater(cMyDiveMoment& moment);
    double stayOnSurface(cMyDiveMoment& moment);

    /// In cm/s, since the sample about a second before; to be told each depth once.
    double verticalSpeed(const PastDepth& now);

    void countTime(qint64 elapsed);
    void addMotion(qint16 depth, qint16 speed);
    void changePhase(int speed);
    void setDiveValues(cMyDiveValues& values) const;
    void setSensorValues(cMyDiveValues& values, int sensor, const cMyValueRange& range);
    void setGreatestValues(cMyDiveValues& values);
    [[nodiscard]] qint64 diveTime() const;

    Settings m_settings;
    cMyDiveValues m_greatest; ///< of which those since the statistics were cleared are in use
    Statistics m_statistics;
    DivePhase m_phase = DivePhase::Descent;
    bool m_isUnderwater = false;
    qint64 m_lastTime = 0;
    std::deque<PastDepth> m_past; ///< of about the last second, the oldest first
    qint64 m_surfaceTime = 0;     ///< in ms
    qint16 m_totalBeforeDive = 0; ///< in s
};

#endif
