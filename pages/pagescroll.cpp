// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pages/pagescroll.h"

#include <QEvent>

cMyPageScroll::cMyPageScroll(QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
}

bool cMyPageScroll::event(QEvent* event)
{
    if (event->type() == QEvent::Polish && widget() != nullptr) {
        viewport()->setAutoFillBackground(false);
        widget()->setAutoFillBackground(false);
    }
    return QScrollArea::event(event);
}
