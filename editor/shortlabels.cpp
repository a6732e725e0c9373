// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/shortlabels.h"

namespace {

/// How a label may be shortened. Of "(caption & value)" and the like the end matters most; they
/// also do without blanks.
constexpr cMyShortLabels::Way ways[] = {{true, 0.25},  {true, 0.5},  {true, 0.75}, {false, 1.0},
                                        {false, 0.75}, {false, 0.5}, {false, 0.25}};

QString withGap(const QString& text, int kept, double frontShare)
{
    const int front = qRound(kept * frontShare);
    return text.left(front).trimmed() + QChar(0x2026) + text.right(kept - front);
}

/// A text that takes advance pixels, in no more than width of them, with this share of what
/// remains before the gap.
QString cut(const QString& text, int advance, const QFontMetrics& metrics, int width,
            double frontShare)
{
    const auto fits = [&](int kept) {
        return metrics.horizontalAdvance(withGap(text, kept, frontShare)) <= width;
    };
    // Letters are about as wide as the text's average, so that few lengths need measuring.
    const int length = static_cast<int>(text.size());
    int kept = qBound(1, length * width / qMax(1, advance) - 1, length - 1);
    while (kept > 0 && !fits(kept)) {
        --kept;
    }
    while (kept + 1 < length && fits(kept + 1)) {
        ++kept;
    }
    return withGap(text, kept, frontShare);
}

} // namespace

cMyShortLabels::cMyShortLabels(QStringList labels, const QFontMetrics& metrics)
    : m_labels(std::move(labels)), m_metrics(metrics)
{
    m_advances.reserve(m_labels.size());
    for (const QString& label : qAsConst(m_labels)) {
        m_advances.append(m_metrics.horizontalAdvance(label));
        m_fullWidth = qMax(m_fullWidth, m_advances.last());
    }
}

QString cMyShortLabels::label(int row, int width)
{
    if (row < 0 || row >= m_labels.size() || m_advances.at(row) <= width) {
        return m_labels.value(row);
    }
    if (width != m_width) {
        shorten(width);
    }
    return m_short.value(row);
}

int cMyShortLabels::advance(int row, int width)
{
    const QString shown = label(row, width);
    return shown == m_labels.value(row) ? m_advances.value(row)
                                        : m_metrics.horizontalAdvance(shown);
}

void cMyShortLabels::shorten(int width)
{
    m_width = width;
    m_short.clear();
    QVector<int> open; // rows that have no label of their own yet
    for (int row = 0; row < m_labels.size(); ++row) {
        const bool fits = m_advances.at(row) <= width;
        m_short.append(fits ? m_labels.at(row) : QString());
        if (!fits) {
            open.append(row);
        }
    }
    for (const Way& way : ways) {
        QStringList candidates = m_short;
        for (const int row : qAsConst(open)) {
            candidates[row] = shortened(row, width, way);
        }
        QVector<int> rest;
        for (const int row : qAsConst(open)) {
            if (!candidates.at(row).isEmpty() && candidates.count(candidates.at(row)) == 1) {
                m_short[row] = candidates.at(row);
            } else {
                rest.append(row);
            }
        }
        open = rest;
    }
    for (const int row : qAsConst(open)) {
        m_short[row] = m_labels.at(row); // rather cut off by the edge than mistaken for another
    }
}

QString cMyShortLabels::shortened(int row, int width, const Way& way) const
{
    const bool isList = m_labels.at(row).contains(QLatin1String(" & "));
    if (isList != way.isForLists) {
        return {};
    }
    QString text = m_labels.at(row);
    text.replace(QLatin1String(" & "), QLatin1String("&"));
    const int advance = isList ? m_metrics.horizontalAdvance(text) : m_advances.at(row);
    return advance <= width ? text : cut(text, advance, m_metrics, width, way.frontShare);
}
