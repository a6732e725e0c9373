// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEMLOOK_H
#define MIOLKA_CLI_SYSTEMLOOK_H

#include <QString>
#include <QVector>

/// One of our devices as USB shows it, with a serial port or without.
struct cMyUsbDevice
{
    QString name; ///< its place on the bus, such as "1-4"
    quint16 product = 0;
    QString serialNumber; ///< empty if it tells none
    QString portName;     ///< of its serial port, such as "ttyACM0"; empty if it has none
};

/// What the system tells in its files (/sys, /proc, /dev, /run) of devices, ports and who uses
/// them. Each call looks anew. Where a system has no such files (all but Linux), nothing is found.
class cMySystemLook
{
public:
    /// The directory that the files are below; another one than the root is for tests.
    explicit cMySystemLook(const QString& root = QStringLiteral("/"));

    /// Devices and boot loaders of ours, in the order of their names.
    [[nodiscard]] QVector<cMyUsbDevice> usbDevices() const;

private:
    [[nodiscard]] QString path(const QString& absolute) const;

    QString m_root;
};

#endif
