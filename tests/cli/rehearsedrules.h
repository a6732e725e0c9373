// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_CLI_REHEARSEDRULES_H
#define MIOLKA_TESTS_CLI_REHEARSEDRULES_H

#include "emulator/rulenumbers.h"
#include "tests/emulator/rulebuilder.h"

/// Settings to rehearse dives with.
namespace support {

constexpr int attention = 215; ///< a message that is none of a measured value

inline int when(RuleCondition condition)
{
    return static_cast<int>(condition);
}

/// The default settings and three rules: the depth every 5 m, "Attention" once at 18 m, and the
/// dive time at the end of the dive.
class ThreeRules : public RuleBuilder
{
public:
    ThreeRules()
    {
        put("distanceE", 500);
        messageRule(1)
            .when(support::when(RuleCondition::Underwater))
            .says(emulator::Depth)
            .repeats(static_cast<int>(RuleRepetition::EveryDistance));
        messageRule(2)
            .when(support::when(RuleCondition::Underwater))
            .atLeast(emulator::Depth, 1800)
            .says(attention);
        messageRule(3).when(support::when(RuleCondition::DiveEnds)).says(emulator::DiveTime);
    }
};

/// The default settings and so many rules that talk all the time.
class TalkativeRules : public RuleBuilder
{
public:
    explicit TalkativeRules(int count)
    {
        for (int rule = 1; rule <= count; ++rule) {
            messageRule(rule)
                .when(support::when(RuleCondition::Anytime))
                .says(emulator::Depth)
                .repeats(static_cast<int>(RuleRepetition::Still));
        }
    }
};

} // namespace support

#endif
