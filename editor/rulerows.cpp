// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/rulerows.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>

cMyRuleRows::cMyRuleRows(QWidget* parent) : QWidget(parent) {}

bool cMyRuleRows::event(QEvent* event)
{
    const bool isHandled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::LayoutRequest:
    case QEvent::Resize:
    case QEvent::Move:
        emit columnsMoved();
        break;
    default:
        break;
    }
    return isHandled;
}

void cMyRuleRows::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        emit lookChanged();
    }
}

void cMyRuleRows::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Base));
    const auto* grid = qobject_cast<const QGridLayout*>(layout());
    if (grid == nullptr) {
        return;
    }
    for (int row = 1; row < grid->rowCount(); row += 2) {
        const QRect cell = grid->cellRect(row, 0);
        const int gap = grid->verticalSpacing();
        painter.fillRect(0, cell.top() - gap / 2, width(), cell.height() + gap,
                         palette().brush(QPalette::AlternateBase));
    }
}
