// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_SERVICECOMMANDS_H
#define MIOLKA_DEVICE_SERVICECOMMANDS_H

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>

class QMessageBox;
class QWidget;
class cMyMiolka;

/// The commands that act on the device itself, each behind a question, and the warning of a device
/// that waits in its boot loader.
class cMyServiceCommands : public QObject
{
    Q_OBJECT

public:
    /// Neither is owned; the window is this object's parent.
    cMyServiceCommands(cMyMiolka& link, QWidget& window);

    /// Each asks its question, and sends the command if the user says Yes.
    void reset();
    void clearStatistics();
    void powerOff();
    void updateFirmware();

    /// Shows the warning, unless it stands already or was closed a moment ago.
    void warnOfBootMode();

private:
    cMyMiolka& m_link;
    QWidget& m_window;
    QPointer<QMessageBox> m_warning;
    QDeadlineTimer m_warningRests; ///< since the warning was closed
};

#endif
