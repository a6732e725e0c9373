// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_COMPARISON_H
#define MIOLKA_EMULATOR_COMPARISON_H

#include "editor/fieldcodec.h"
#include "emulator/divemoment.h"

class cMyTableModel;

/// A measured value compared with a threshold, as a rule asks for it. For any one thread.
class cMyComparison
{
public:
    /// The numbers as the settings hold them; values is the table of measured values, which is
    /// not needed any more afterwards.
    cMyComparison(int value, int comparison, int threshold, const cMyTableModel& values);

    /// Always if the rule applies regardless of any value, never with numbers that mean nothing.
    [[nodiscard]] bool isTrue(const cMyDiveValues& values) const;

private:
    int m_value;
    int m_comparison;
    int m_threshold;
    bool m_isKnown;
    cMyThresholdScale m_scale;
};

#endif
