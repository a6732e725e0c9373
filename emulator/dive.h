// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DIVE_H
#define MIOLKA_EMULATOR_DIVE_H

#include "emulator/divemodel.h"
#include "emulator/diverules.h"

#include <QVector>

class cMyMemoryArea;

/// One simulation: takes a sample whenever one is due, keeps the measured values in RAM, and has
/// the rules judge them. Time comes from the caller, in ms since the simulation began.
class cMyDive
{
public:
    /// Settings are as they lie in the EEPROM, and not needed any more afterwards. The statistics
    /// in the memories are continued; the readings there become those of a device at the surface,
    /// as what is simulated comes later. The first sample is due at time 0.
    cMyDive(const cMyMemoryArea& settings, cMyDeviceMemories& memories, bool isCharging);

    /// When the next sample is due.
    [[nodiscard]] qint64 nextSample() const { return m_model.sampleTime(m_samples); }

    /// The absolute pressure, in mbar, with which the next sample comes nearest to a depth in m;
    /// may be more than the memories hold. Surface pressure and temperature are those in the
    /// memories.
    [[nodiscard]] double pressureAt(double depth, const cMyDeviceMemories& memories) const
    {
        return m_model.pressureAt(depth, memories.values());
    }

    /// Takes all samples due up to that time, that time included, of what the memories hold now.
    /// What is to be sampled later must be written afterwards.
    QVector<cMySpokenMessage> advanceTo(qint64 time, cMyDeviceMemories& memories);

    /// The charger is there or not, from the next sample on.
    void setCharging(bool isCharging) { m_isCharging = isCharging; }

    /// The statistics in the memories were cleared.
    void clearStatistics() { m_model.clearStatistics(); }

    /// The device goes off at the time to which it was advanced, which takes no sample. Nothing may
    /// be called afterwards.
    QVector<cMySpokenMessage> finish();

private:
    QVector<cMySpokenMessage> takeSample(cMyDiveValues& values);

    cMyDiveModel m_model;
    cMyDiveRules m_rules;
    cMyDiveMoment m_last;
    qint64 m_samples = 0; ///< taken so far
    qint64 m_time = 0;
    bool m_isCharging;
};

#endif
