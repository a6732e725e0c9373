// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DIVERULES_H
#define MIOLKA_EMULATOR_DIVERULES_H

#include "emulator/comparison.h"
#include "emulator/divemoment.h"
#include "emulator/divetimers.h"
#include "emulator/repetition.h"
#include "emulator/ruleconditions.h"
#include "emulator/spokenform.h"

#include <QVector>

#include <optional>
#include <vector>

class cMyMemoryArea;

/// The rules that a diver has written into the settings, at work: they drive the stopwatch and the
/// timers, and say what the device speaks. One for each simulation; for any one thread.
class cMyDiveRules
{
public:
    /// Reads the rules out of a settings image, which is not needed any more afterwards. Bytes that
    /// mean nothing make rules that do nothing.
    explicit cMyDiveRules(const cMyMemoryArea& settings);

    /// Called once for each sample, in order. Sets the stopwatch and the timers among the values,
    /// which the other values do not depend on, and returns what is said, in the order of the
    /// rules.
    QVector<cMySpokenMessage> take(cMyDiveMoment& moment);

private:
    struct Rule
    {
        RuleCondition condition;
        cMyComparison comparison;
        std::optional<int> occasion; ///< for which it held at the sample before
    };

    struct TimerRule
    {
        Rule rule;
        int action;
        int time; ///< in s
    };

    struct MessageRule
    {
        Rule rule;
        cMySpokenForm form;
        cMyRepetition repetition;
    };

    [[nodiscard]] bool becomesTrue(Rule& rule, const cMyDiveMoment& moment) const;
    void act(const TimerRule& rule);
    void driveTimers(const cMyDiveMoment& moment);
    [[nodiscard]] bool speaks(MessageRule& rule, const cMyDiveMoment& moment) const;
    void showTimers(cMyDiveMoment& moment) const;

    std::vector<TimerRule> m_timerRules;
    std::vector<MessageRule> m_messageRules;
    cMyRuleConditions m_conditions;
    cMyDiveTimers m_timers;
    int m_depth = 0; ///< in cm, at the sample before
};

#endif
