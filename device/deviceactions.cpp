// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/deviceactions.h"

#include <QAction>
#include <QWidget>

cMyDeviceActions::cMyDeviceActions(const QList<QAction*>& actions, const QList<QWidget*>& widgets)
{
    for (QAction* action : actions) {
        m_actions.insert(action, action->statusTip());
    }
    for (QWidget* widget : widgets) {
        m_widgets.insert(widget, widget->toolTip());
    }
    apply();
}

void cMyDeviceActions::setAvailable(bool isAvailable)
{
    m_isAvailable = isAvailable;
    apply();
}

void cMyDeviceActions::setInUse(bool isInUse)
{
    m_isInUse = isInUse;
    apply();
}

void cMyDeviceActions::apply()
{
    const bool isEnabled = m_isAvailable || m_isInUse;
    const QString reason = tr("Najpierw podłącz Miolkę.");
    for (auto each = m_actions.cbegin(); each != m_actions.cend(); ++each) {
        each.key()->setEnabled(isEnabled);
        each.key()->setStatusTip(isEnabled ? each.value() : reason);
    }
    for (auto each = m_widgets.cbegin(); each != m_widgets.cend(); ++each) {
        each.key()->setEnabled(isEnabled);
        each.key()->setToolTip(isEnabled ? each.value() : reason);
    }
}
