// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/ruleheading.h"

#include "editor/rulerows.h"

#include <QGridLayout>
#include <QLabel>

cMyRuleHeading::cMyRuleHeading(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void cMyRuleHeading::follow(cMyRuleRows& rows, QGridLayout& grid)
{
    m_rows = &rows;
    m_grid = &grid;
    connect(&rows, &cMyRuleRows::columnsMoved, this, &cMyRuleHeading::align);
}

void cMyRuleHeading::addCaption(int gridColumn, const QString& text, Qt::Alignment alignment)
{
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(alignment | Qt::AlignVCenter);
    m_captions.append({gridColumn, label});
}

QSize cMyRuleHeading::sizeHint() const
{
    constexpr int margins = 8;
    return {0, fontMetrics().height() + margins};
}

void cMyRuleHeading::align()
{
    const QPoint origin = m_rows->mapTo(window(), QPoint(0, 0)) - mapTo(window(), QPoint(0, 0));
    for (const Caption& caption : qAsConst(m_captions)) {
        const QRect cell = m_grid->cellRect(0, caption.gridColumn);
        const int width = qMax(cell.width(), caption.label->sizeHint().width());
        const int left = caption.label->alignment().testFlag(Qt::AlignRight)
                             ? cell.right() + 1 - width
                             : cell.left();
        caption.label->setGeometry(origin.x() + left, 0, width, height());
    }
}
