// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_SHORTLABELS_H
#define MIOLKA_EDITOR_SHORTLABELS_H

#include <QFontMetrics>
#include <QStringList>
#include <QVector>

/// The labels of an option table as a column of a given width shows them. What has no room is
/// left out at the end, or where that keeps a label unlike its neighbours: "if timer 1 is c…",
/// but "Atmospheric…MIN".
class cMyShortLabels
{
public:
    /// A way to shorten labels.
    struct Way
    {
        bool isForLists;   ///< for labels that list something: "(caption & value)"
        double frontShare; ///< of what remains, before the gap
    };

    /// Labels of one table, and the font that they will be drawn in.
    cMyShortLabels(QStringList labels, const QFontMetrics& metrics);

    /// What the longest label takes, in pixels.
    [[nodiscard]] int fullWidth() const { return m_fullWidth; }

    /// The label of a row in no more than width pixels. The labels of one width are kept.
    [[nodiscard]] QString label(int row, int width);

    /// What that label takes, in pixels.
    [[nodiscard]] int advance(int row, int width);

private:
    void shorten(int width);
    [[nodiscard]] QString shortened(int row, int width, const Way& way) const;

    QStringList m_labels;
    QVector<int> m_advances; ///< of the labels, in pixels
    QFontMetrics m_metrics;
    int m_fullWidth = 0;
    int m_width = -1; ///< that m_short is for
    QStringList m_short;
};

#endif
