// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/dive.h"

#include "editor/settingslayout.h"
#include "fuzz/support.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <algorithm>

using fuzz::expect;

namespace {

/// Bytes of each part of a dive: how many samples, and the pressure while they are taken.
constexpr int partSize = 3;

/// A dive by any settings, and what must be so at each of its samples.
class Diver
{
public:
    explicit Diver(const cMyMemoryArea& settings) : m_dive(settings, m_memories, false) {}

    void stay(int samples, qint16 pressure)
    {
        m_memories.setValue(emulator::AbsolutePressure, pressure);
        m_dive.setCharging(pressure % 2 == 0);
        for (int i = 0; i < samples; ++i) {
            const qint64 due = m_dive.nextSample();
            expect(due >= m_time, "samples come one after another");
            m_time = due;
            check(m_dive.advanceTo(due, m_memories));
            checkValues();
        }
    }

    void finish() { check(m_dive.finish()); }

private:
    void check(const QVector<cMySpokenMessage>& messages)
    {
        for (const cMySpokenMessage& message : messages) {
            expect(message.rule > m_rule && message.rule <= editor::messageRuleCount,
                   "each rule speaks once at a sample, in their order");
            expect(message.time == m_time, "a message is of its sample");
            expect(!message.text.isEmpty() && message.depth >= 0, "a message says something");
            m_rule = message.rule;
        }
        m_rule = 0;
    }

    void checkValues()
    {
        using namespace emulator;
        const cMyDiveValues values = m_memories.values();
        expect(values[Depth] >= 0 && values[DepthMaximum] >= values[DepthAverage],
               "depths are in their order");
        expect(values[GreatestDepth] >= values[DepthMaximum] &&
                   values[GreatestDiveTime] >= values[DiveTime],
               "no dive passes the greatest");
        expect(values[StatusDiveTime] == values[GreatestDiveTime], "the dive time is there twice");
        expect(values[Minimum] <= values[Average] && values[Average] <= values[Maximum],
               "pressures are in their order");
        expect(values[AscentSpeedMaximum] <= 0 && values[DescentSpeedMaximum] >= 0,
               "speeds have their sign");
        const auto timers = values.cbegin() + Stopwatch0;
        expect(*std::min_element(timers, timers + cMyDiveTimers::count) >= 0,
               "no timer is below zero");
    }

    cMyDeviceMemories m_memories;
    cMyDive m_dive;
    qint64 m_time = 0;
    int m_rule = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    constexpr int mostParts = 32;
    constexpr int mostSamples = 16;
    static const QByteArray defaults = cMyDeviceMemories().bytes(EEPROM);
    const QByteArray input = fuzz::bytesOf(bytes, size);
    const QByteArray image = input.left(image::settingsImageSize) + defaults.mid(input.size());
    cMyMemoryArea settings;
    settings.setData(0, QVector<quint8>(image.cbegin(), image.cend()));

    Diver diver(settings);
    const QByteArray parts = input.mid(image::settingsImageSize, mostParts * partSize);
    for (int part = 0; part + partSize <= parts.size(); part += partSize) {
        const int pressure =
            static_cast<quint8>(parts.at(part + 1)) | static_cast<quint8>(parts.at(part + 2)) << 8;
        diver.stay(static_cast<quint8>(parts.at(part)) % mostSamples,
                   static_cast<qint16>(pressure));
    }
    diver.finish();
    return 0;
}
