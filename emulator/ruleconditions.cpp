// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/ruleconditions.h"

namespace {

std::optional<int> when(bool holds, int occasion)
{
    return holds ? std::make_optional(occasion) : std::nullopt;
}

std::optional<int> timerOccasion(RuleCondition condition, const cMyDiveTimers& timers)
{
    using State = cMyDiveTimers::State;
    constexpr std::pair<RuleCondition, State> states[] = {
        {RuleCondition::TimerCounts, State::Counting},
        {RuleCondition::TimerIsStopped, State::Stopped},
        {RuleCondition::TimerPassed, State::Passed}};
    for (const auto& [first, state] : states) {
        const auto timer = emulator::timerOf(static_cast<int>(condition), static_cast<int>(first));
        if (timer) {
            return when(timers.state(*timer) == state, timers.changes(*timer));
        }
    }
    return std::nullopt;
}

} // namespace

namespace emulator {

std::optional<int> timerOf(int number, int first)
{
    return when(number >= first && number < first + cMyDiveTimers::count, number - first);
}

} // namespace emulator

void cMyRuleConditions::take(const cMyDiveMoment& moment)
{
    ++m_samples;
    m_dives += moment.diveBegins ? 1 : 0;
    m_surfacings += moment.diveEnds ? 1 : 0;
    m_charges += moment.chargingBegins ? 1 : 0;
}

std::optional<int> cMyRuleConditions::occasion(RuleCondition condition, const cMyDiveMoment& moment,
                                               const cMyDiveTimers& timers) const
{
    const auto inPhase = [this, &moment](DivePhase phase) {
        return when(moment.isUnderwater && moment.phase == phase, m_dives);
    };
    if (moment.switchesOff && condition != RuleCondition::SwitchesOff) {
        return std::nullopt;
    }
    switch (condition) {
    case RuleCondition::Anytime:
        return 0;
    case RuleCondition::Underwater:
        return when(moment.isUnderwater, m_dives);
    case RuleCondition::OnSurface:
        return when(!moment.isUnderwater, m_surfacings);
    case RuleCondition::DiveBegins:
        return when(moment.diveBegins, m_samples);
    case RuleCondition::DiveEnds:
        return when(moment.diveEnds, m_samples);
    case RuleCondition::Descending:
        return inPhase(DivePhase::Descent);
    case RuleCondition::OnBottom:
        return inPhase(DivePhase::Bottom);
    case RuleCondition::Ascending:
        return inPhase(DivePhase::Ascent);
    case RuleCondition::SwitchesOn:
        return when(moment.switchesOn, m_samples);
    case RuleCondition::SwitchesOff:
        return when(moment.switchesOff, m_samples);
    case RuleCondition::ChargingBegins:
        return when(moment.chargingBegins, m_samples);
    case RuleCondition::Charging:
        return when(moment.isCharging, m_charges);
    case RuleCondition::ChargingEnds:
        return when(moment.chargingEnds, m_samples);
    default:
        return timerOccasion(condition, timers);
    }
}
