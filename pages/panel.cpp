// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pages/panel.h"

#include <QPainter>

cMyPanel::cMyPanel(QWidget* parent) : QGroupBox(parent) {}

void cMyPanel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor border = palette().color(QPalette::WindowText);
    constexpr int faint = 60;
    border.setAlpha(faint);
    painter.setPen(border);
    painter.setBrush(palette().brush(QPalette::Window));
    constexpr double half = 0.5; // lines of a pixel lie between coordinates
    constexpr double corner = 6;
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), corner, corner);
    painter.setPen(palette().color(QPalette::WindowText));
    constexpr int left = 12;
    constexpr int top = 6;
    painter.drawText(rect().adjusted(left, top, -left, 0),
                     static_cast<int>(Qt::AlignTop | Qt::AlignLeading), title());
}
