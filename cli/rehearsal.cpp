// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rehearsal.h"

#include "cli/diveprofile.h"
#include "editor/fieldcodec.h"
#include "emulator/dive.h"
#include "emulator/rulenumbers.h"
#include "image/memoryarea.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double milliseconds = 1000; ///< in a second
constexpr double centimetres = 100;   ///< in a metre
constexpr double tenths = 10;         ///< of a degree, in one

/// The message rules that are not switched off.
QVector<int> speakingRules(const cMyMemoryArea& settings)
{
    const auto member = [&settings](int rule, const char* name) {
        return editor::storedNumber(
            settings, editor::settingsField(editor::ruleMember(QStringLiteral("messageRule"), rule,
                                                               QString::fromLatin1(name))));
    };
    const cMyMessageTables tables;
    QVector<int> rules;
    for (int rule = 1; rule <= editor::messageRuleCount; ++rule) {
        const cMySpokenForm form(member(rule, "message"), member(rule, "form"), tables);
        if (member(rule, "condition") != editor::conditionNever && !form.isSilent()) {
            rules.append(rule);
        }
    }
    return rules;
}

cMyOutcome tooDeep(double time, double depth)
{
    return {cli::ExitStatus::BadFile,
            {QStringLiteral("the profile is %1 m deep at %2 s, where the pressure is more than the "
                            "device can measure (%3 mbar, with the salinity and gravity of these "
                            "settings)")
                 .arg(QString::number(depth, 'f', 2), QString::number(time, 'f', 0))
                 .arg(std::numeric_limits<qint16>::max())}};
}

} // namespace

cMyRehearsal::cMyRehearsal(const cMyMemoryArea& settings, const cMyDiveProfile& profile,
                           const std::function<bool(int, int)>& progress)
    : m_silentRules(speakingRules(settings))
{
    dive(settings, profile, progress);
}

void cMyRehearsal::dive(const cMyMemoryArea& settings, const cMyDiveProfile& profile,
                        const std::function<bool(int, int)>& progress)
{
    const cMyDiveProfile way = profile.completed();
    m_duration = way.duration();
    const auto end = static_cast<qint64>(std::ceil(m_duration * milliseconds));
    cMyDeviceMemories memories;
    cMyDive dive(settings, memories, false);
    cMyRehearsedDepth last;
    qint64 toldSecond = -1;
    for (qint64 due = dive.nextSample(); due <= end; due = dive.nextSample()) {
        const double now = static_cast<double>(due) / milliseconds;
        if (const auto temperature = way.temperatureAt(now)) {
            memories.setValue(emulator::Temperature,
                              static_cast<qint16>(std::lround(*temperature * tenths)));
        }
        const double depth = way.depthAt(now);
        const double pressure = dive.pressureAt(depth, memories);
        if (pressure > std::numeric_limits<qint16>::max()) {
            m_outcome = tooDeep(now, depth);
            return;
        }
        memories.setValue(emulator::AbsolutePressure, static_cast<qint16>(pressure));
        keep(dive.advanceTo(due, memories));
        last = {now, memories.value(emulator::Depth) / centimetres};
        keep(last);
        const auto second = static_cast<qint64>(now);
        if (progress && second != toldSecond &&
            !progress(static_cast<int>(second), static_cast<int>(m_duration))) {
            m_outcome = {cli::ExitStatus::Cancelled, {QStringLiteral("cancelled")}};
            return;
        }
        toldSecond = second;
    }
    keepDeepestAndLast(last);
    keep(dive.advanceTo(end, memories));
    keep(dive.finish());
}

void cMyRehearsal::keep(const cMyRehearsedDepth& sample)
{
    if (m_depths.isEmpty() || std::floor(sample.time) > std::floor(m_depths.last().time)) {
        m_depths.append(sample);
    }
    if (sample.depth > m_deepest.depth) {
        m_deepest = sample;
    }
}

void cMyRehearsal::keepDeepestAndLast(const cMyRehearsedDepth& last)
{
    for (const cMyRehearsedDepth& sample : {m_deepest, last}) {
        const auto place = std::lower_bound(
            m_depths.begin(), m_depths.end(), sample,
            [](const auto& one, const auto& other) { return one.time < other.time; });
        if (place == m_depths.end() || place->time > sample.time) {
            m_depths.insert(place, sample);
        }
    }
}

void cMyRehearsal::keep(const QVector<cMySpokenMessage>& messages)
{
    for (const cMySpokenMessage& message : messages) {
        m_silentRules.removeOne(message.rule);
    }
    const auto kept = std::min(messages.size(), mostMessages - m_messages.size());
    m_messages += messages.mid(0, kept);
    m_leftOut += messages.size() - kept;
}

bool cMyRehearsal::isHasty(int message) const
{
    return message > 0 &&
           static_cast<double>(m_messages.at(message).time - m_messages.at(message - 1).time) <
               timeToSpeak * milliseconds;
}
