// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_CLI_SYSTEMTREE_H
#define MIOLKA_TESTS_CLI_SYSTEMTREE_H

#include "tests/support/posix.h"

#include <QTemporaryDir>

namespace support {

/// The files in which a system tells of its devices, as a test lays them out.
class SystemTree
{
public:
    [[nodiscard]] QString root() const { return m_directory.path(); }
    [[nodiscard]] QString path(const QString& absolute) const { return root() + absolute; }

    /// A file with its directories.
    void put(const QString& absolute, const QByteArray& contents)
    {
        QDir().mkpath(QFileInfo(path(absolute)).path());
        writeFile(path(absolute), contents);
    }

    void link(const QString& absolute, const QString& target)
    {
        QDir().mkpath(QFileInfo(path(absolute)).path());
        if (!QFile::link(target, path(absolute))) {
            qFatal("cannot link %s", qPrintable(absolute));
        }
    }

    /// A USB device with the numbers as the system writes them; with a serial port if it has a
    /// name.
    void putUsbDevice(const QString& name, const QByteArray& vendor, const QByteArray& product,
                      const QString& portName = {}, const QByteArray& serial = {})
    {
        const QString usb = QStringLiteral("/sys/devices/usb1/") + name;
        put(usb + QStringLiteral("/idVendor"), vendor + '\n');
        put(usb + QStringLiteral("/idProduct"), product + '\n');
        if (!serial.isEmpty()) {
            put(usb + QStringLiteral("/serial"), serial + '\n');
        }
        if (!portName.isEmpty()) {
            put(QStringLiteral("%1/%2:1.0/tty/%3/dev").arg(usb, name, portName), "166:0\n");
        }
        link(QStringLiteral("/sys/bus/usb/devices/") + name, path(usb));
    }

private:
    QTemporaryDir m_directory;
};

} // namespace support

#endif
