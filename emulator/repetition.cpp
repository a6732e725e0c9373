// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/repetition.h"

#include "editor/fieldcodec.h"
#include "emulator/rulenumbers.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr qint64 second = 1000; ///< in ms

constexpr const char* periods[] = {"periodA", "periodB", "periodC", "periodD"};
constexpr const char* distances[] = {"distanceE", "distanceF", "distanceG", "distanceH"};

/// The setting that a repetition of a group of consecutive ones names; nothing if it is not in it.
template <std::size_t Count>
std::optional<int> settingOf(int number, RuleRepetition first, const char* const (&names)[Count],
                             const cMyMemoryArea& settings)
{
    const int position = number - static_cast<int>(first);
    if (position < 0 || position >= static_cast<int>(Count)) {
        return std::nullopt;
    }
    const QString name = QString::fromLatin1(names[position]);
    return editor::storedNumber(settings, editor::settingsField(name));
}

} // namespace

cMyRepetition::cMyRepetition(int number, const cMyMemoryArea& settings)
{
    if (number == static_cast<int>(RuleRepetition::Still)) {
        m_kind = Kind::Period;
        m_period = second; // about as long as it takes to say something
    } else if (const auto period =
                   settingOf(number, RuleRepetition::EveryPeriod, periods, settings)) {
        m_kind = Kind::Period;
        m_period = std::max(*period, 1) * second;
    } else if (const auto distance =
                   settingOf(number, RuleRepetition::EveryDistance, distances, settings)) {
        m_kind = Kind::Distance;
        m_distance = *distance;
    }
}

bool cMyRepetition::speaks(const cMyRepetitionStep& step)
{
    if (step.begins) {
        m_hasSpoken = false;
    }
    if (m_kind == Kind::Distance) {
        return speaksOnTheWay(step);
    }
    if (!step.isTrue) {
        return false;
    }
    return m_kind == Kind::Period ? speaksAgain(step.time) : speaksOnce();
}

bool cMyRepetition::speaksOnce()
{
    const bool isFirst = !m_hasSpoken;
    m_hasSpoken = true;
    return isFirst;
}

bool cMyRepetition::speaksAgain(qint64 time)
{
    if (m_spokenAt && time - *m_spokenAt < m_period) {
        return false;
    }
    m_spokenAt = time;
    return true;
}

bool cMyRepetition::speaksOnTheWay(const cMyRepetitionStep& step)
{
    if (m_distance <= 0) {
        return false;
    }
    constexpr int hoveringPart = 4; // who stays within a quarter of the distance has not gone away
    const int from = step.depthBefore;
    const bool wentAway = std::abs(from - m_mark * m_distance) * hoveringPart > m_distance;
    if (step.begins || step.diveBegins || wentAway) {
        m_mark = 0;
    }
    const int to = step.depth;
    const auto markAbove = [this](int depth) {
        return std::max(depth, 0) / m_distance;
    };
    const auto markBelow = [this](int depth) {
        return (std::max(depth, 0) + m_distance - 1) / m_distance;
    };
    // A mark is met where a step ends on it, not where one begins on it.
    const bool goesDown = to > from;
    const int first = goesDown ? markAbove(from) + 1 : markBelow(from) - 1;
    const int last = goesDown ? markAbove(to) : std::max(markBelow(to), 1);
    const bool crosses = to != from && (goesDown ? first <= last : first >= last);
    if (!crosses || last == m_mark) {
        return false;
    }
    if (step.isTrue) {
        m_mark = last;
    }
    return step.isTrue;
}
