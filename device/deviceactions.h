// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_DEVICEACTIONS_H
#define MIOLKA_DEVICE_DEVICEACTIONS_H

#include <QCoreApplication>
#include <QHash>
#include <QList>

class QAction;
class QWidget;

/// Everything in the window that needs a device. While there is none it is disabled and says why.
class cMyDeviceActions
{
    Q_DECLARE_TR_FUNCTIONS(cMyDeviceActions)

public:
    /// None of them is owned. They are disabled until setAvailable().
    cMyDeviceActions(const QList<QAction*>& actions, const QList<QWidget*>& widgets);

    /// A device is there, or is not.
    void setAvailable(bool isAvailable);

    /// While a simulation runs its page must stay usable, also when the device has gone.
    void setInUse(bool isInUse);

private:
    void apply();

    QHash<QAction*, QString> m_actions; ///< with what their status tips say of them
    QHash<QWidget*, QString> m_widgets; ///< with their tool tips
    bool m_isAvailable = false;
    bool m_isInUse = false;
};

#endif
