// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/portaccess.h"

#include <QSerialPort>
#include <QSerialPortInfo>

#include <algorithm>

#include <windows.h>

namespace {

/// In front of the names of devices, which are no files.
const QString devices = QStringLiteral("\\\\.\\");

} // namespace

namespace cli {

QString portPath(const QString& name)
{
    return name.startsWith(devices) ? name : devices + name;
}

QString portName(const QString& path)
{
    return path.startsWith(devices) ? path.mid(devices.size()) : path;
}

bool isPortThere(const QString& path)
{
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    return std::any_of(ports.cbegin(), ports.cend(), [&](const QSerialPortInfo& port) {
        return port.systemLocation().compare(path, Qt::CaseInsensitive) == 0;
    });
}

QString linkedPort(const QString& path)
{
    return path;
}

/// Everybody has it; who is refused finds the port in use.
bool isPortAllowed(const QString& /*path*/)
{
    return true;
}

bool isHungUp(const QSerialPort& port)
{
    DWORD errors = 0;
    COMSTAT state = {};
    return ClearCommError(port.handle(), &errors, &state) == FALSE;
}

} // namespace cli
