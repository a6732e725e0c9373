// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_PORTSELECT_H
#define MIOLKA_DEVICE_PORTSELECT_H

#include "device/ttywatch.h"

#include <QComboBox>
#include <QList>
#include <QSerialPortInfo>
#include <QStringList>

/// Offers the serial ports that a device is attached to, by their names, and keeps itself up to
/// date. The current text is the port to use; it is empty, and the box disabled, after the last
/// device has gone.
class cMyPortSelect : public QComboBox
{
    Q_OBJECT

public:
    explicit cMyPortSelect(QWidget* parent);

public slots:
    /// While this port is attached the list stays as it is, so that who uses the port is not
    /// disturbed. An empty name ends that.
    void hold(const QString& portName);

signals:
    /// The list is about to become these; before currentTextChanged() tells what follows from it.
    void portsListed(const QStringList& names);

    /// Never emitted; currentTextChanged() tells of the port.
    void portChanged(QString port);

    /// A device waits in its boot loader; ten times a second while it does.
    void bootMode();

private slots:
    void updatePorts();

private:
    void rebuild(const QStringList& names);

    QList<QSerialPortInfo> m_ports;
    QString m_currentPort;
    qint32 m_portCount = 0;
    QString m_heldPort;
    bool m_wasHeld = false; ///< at the last look
    QStringList m_names;    ///< that are listed
    cMyTtyWatch m_ttys;
};

#endif
