// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/portprobe.h"

#include "cli/system/portaccess.h"
#include "device/serialline.h"

#include <QSerialPort>

namespace {

using Access = cMyPortProbe::Access;

Access accessAfter(QSerialPort::SerialPortError error, const QString& path)
{
    if (error != QSerialPort::PermissionError) {
        return Access::Faulty;
    }
    // The same error stands for a lock of another program.
    return cli::isPortAllowed(path) ? Access::Busy : Access::Forbidden;
}

} // namespace

namespace cli {

cMyPortProbe probePort(const QString& path)
{
    QSerialPort port;
    if (device::openPort(port, path)) {
        return {};
    }
    return {accessAfter(port.error(), path), port.errorString()};
}

} // namespace cli
