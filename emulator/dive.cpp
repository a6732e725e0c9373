// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/dive.h"

#include <algorithm>

using namespace emulator;

cMyDive::cMyDive(const cMyMemoryArea& settings, cMyDeviceMemories& memories, bool isCharging)
    : m_model(settings, memories.values()), m_rules(settings), m_isCharging(isCharging)
{
    m_last.isCharging = isCharging;
    memories.setValue(AbsolutePressure, memories.value(AtmosphericPressure));
    memories.setValue(Temperature, roomTemperature);
    memories.setValue(BatteryLevel, batteryAtHand);
}

QVector<cMySpokenMessage> cMyDive::advanceTo(qint64 time, cMyDeviceMemories& memories)
{
    m_time = std::max(m_time, time);
    if (nextSample() > m_time) {
        return {};
    }
    QVector<cMySpokenMessage> messages;
    cMyDiveValues values = memories.values();
    while (nextSample() <= m_time) {
        messages += takeSample(values);
    }
    memories.setValues(values);
    return messages;
}

QVector<cMySpokenMessage> cMyDive::takeSample(cMyDiveValues& values)
{
    cMyDiveMoment moment = m_model.sample(m_samples, values);
    moment.switchesOn = m_samples == 0;
    moment.isCharging = m_isCharging;
    moment.chargingBegins = m_isCharging && !m_last.isCharging;
    moment.chargingEnds = !m_isCharging && m_last.isCharging;
    const QVector<cMySpokenMessage> messages = m_rules.take(moment);
    values = moment.values;
    m_last = moment;
    ++m_samples;
    return messages;
}

QVector<cMySpokenMessage> cMyDive::finish()
{
    cMyDiveMoment moment;
    moment.time = m_time;
    moment.elapsed = m_time - m_last.time;
    moment.values = m_last.values;
    moment.phase = m_last.phase;
    moment.isUnderwater = m_last.isUnderwater;
    moment.switchesOff = true;
    moment.isCharging = m_last.isCharging;
    return m_rules.take(moment);
}
