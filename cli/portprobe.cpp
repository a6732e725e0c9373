// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/portprobe.h"

#include "cli/interruption.h"
#include "device/linechannel.h"
#include "device/protocol.h"

#include <QFileInfo>
#include <QSerialPort>

namespace {

using Access = cMyPortProbe::Access;

Access accessAfter(QSerialPort::SerialPortError error, const QString& path)
{
    if (error != QSerialPort::PermissionError) {
        return Access::Faulty;
    }
    // The same error stands for a lock of another program.
    const QFileInfo node(path);
    return node.isReadable() && node.isWritable() ? Access::Busy : Access::Forbidden;
}

cMyLineChannel::Haste hasteOfUser()
{
    return cli::isInterrupted() ? cMyLineChannel::Haste::Leave : cMyLineChannel::Haste::None;
}

} // namespace

namespace cli {

cMyPortProbe probePort(const QString& path)
{
    QSerialPort port(path);
    if (port.open(QIODevice::ReadWrite)) {
        return {};
    }
    return {accessAfter(port.error(), path), port.errorString()};
}

bool doesAnswer(const QString& path)
{
    QSerialPort port(path);
    if (!port.open(QIODevice::ReadWrite)) {
        return false;
    }
    cMyLineChannel channel(hasteOfUser);
    channel.settle(port);
    QString reply;
    return channel.exchange(port, QLatin1String(device::rootWord) + QLatin1String(device::lineEnd),
                            reply);
}

} // namespace cli
