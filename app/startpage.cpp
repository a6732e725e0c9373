// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startpage.h"

#include <QEvent>
#include <QPixmapCache>

cMyStartPage::cMyStartPage(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
}

bool cMyStartPage::event(QEvent* event)
{
    if (!m_wasShown && event->type() == QEvent::Polish) {
        return true;
    }
    if (!m_wasShown && event->type() == QEvent::Show) {
        m_wasShown = true;
        // Two style sheets name the picture; in a cache of the default size it has no room and
        // would be decoded for each.
        constexpr int cacheKilobytes = 32768;
        QPixmapCache::setCacheLimit(cacheKilobytes);
        QEvent polish(QEvent::Polish);
        QWidget::event(&polish);
    }
    return QWidget::event(event);
}
