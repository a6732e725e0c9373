// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_RULEHEADING_H
#define MIOLKA_EDITOR_RULEHEADING_H

#include <QVector>
#include <QWidget>

class QGridLayout;
class QLabel;
class cMyRuleRows;

/// The heading row of a grid of rules. It stands outside the grid, so that it stays when the rows
/// are scrolled, and keeps its captions over their columns.
class cMyRuleHeading : public QWidget
{
    Q_OBJECT

public:
    explicit cMyRuleHeading(QWidget* parent = nullptr);

    /// Follows the columns of the rows' grid.
    void follow(cMyRuleRows& rows, QGridLayout& grid);

    /// Adds the caption of a column of the grid.
    void addCaption(int gridColumn, const QString& text, Qt::Alignment alignment);

    [[nodiscard]] QSize sizeHint() const override;

private:
    void align();

    struct Caption
    {
        int gridColumn;
        QLabel* label;
    };

    QWidget* m_rows = nullptr;
    QGridLayout* m_grid = nullptr;
    QVector<Caption> m_captions;
};

#endif
