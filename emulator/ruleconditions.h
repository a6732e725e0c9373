// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_RULECONDITIONS_H
#define MIOLKA_EMULATOR_RULECONDITIONS_H

#include "emulator/divemoment.h"
#include "emulator/divetimers.h"
#include "emulator/rulenumbers.h"

#include <optional>

/// Whether the conditions of rules hold, and for which time. For any one thread.
class cMyRuleConditions
{
public:
    /// Takes in the next sample; called once for each, before it is judged.
    void take(const cMyDiveMoment& moment);

    /// Nothing unless the condition holds at this sample, the one taken last; else a number that
    /// is the same as at the sample before if the condition has held since then without a break.
    [[nodiscard]] std::optional<int> occasion(RuleCondition condition, const cMyDiveMoment& moment,
                                              const cMyDiveTimers& timers) const;

private:
    int m_samples = 0;
    int m_dives = 0;
    int m_surfacings = 0;
    int m_charges = 0;
};

namespace emulator {

/// The timer that is meant by a number out of four in a row, the first of which means the
/// stopwatch; nothing for other numbers.
[[nodiscard]] std::optional<int> timerOf(int number, int first);

} // namespace emulator

#endif
