// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/comparison.h"

#include "editor/tablemodel.h"
#include "emulator/rulenumbers.h"

cMyComparison::cMyComparison(int value, int comparison, int threshold, const cMyTableModel& values)
    : m_value(value), m_comparison(comparison), m_threshold(threshold),
      m_isKnown(values.rowOfValue(value) >= 0),
      m_scale(editor::thresholdScale(values, values.rowOfValue(value)))
{
}

bool cMyComparison::isTrue(const cMyDiveValues& values) const
{
    const bool comparesNothing = m_scale.minimum == 0 && m_scale.maximum == 0;
    if (!m_isKnown || comparesNothing) {
        return m_isKnown;
    }
    // Both are stored alike. On one scale they are in the same order as their stored units are.
    const double measured =
        editor::shownThreshold(values.at(static_cast<std::size_t>(m_value)), m_scale);
    const double threshold = editor::shownThreshold(m_threshold, m_scale);
    switch (static_cast<RuleComparison>(m_comparison)) {
    case RuleComparison::AtLeast:
        return measured >= threshold;
    case RuleComparison::AtMost:
        return measured <= threshold;
    }
    return false;
}
