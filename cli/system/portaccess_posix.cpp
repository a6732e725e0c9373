// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/portaccess.h"

#include <QFile>
#include <QFileInfo>
#include <QSerialPort>

#include <poll.h>
#include <unistd.h>

namespace {

const QString devices = QStringLiteral("/dev/");

} // namespace

namespace cli {

QString portPath(const QString& name)
{
    return name.contains(QLatin1Char('/')) ? name : devices + name;
}

QString portName(const QString& path)
{
    return path.startsWith(devices) ? path.mid(devices.size()) : path;
}

bool isPortThere(const QString& path)
{
    return QFileInfo::exists(path);
}

QString linkedPort(const QString& path)
{
    const QFileInfo node(path);
    return node.isSymLink() ? node.symLinkTarget() : path;
}

bool isPortAllowed(const QString& path)
{
    return access(QFile::encodeName(path).constData(), R_OK | W_OK) == 0;
}

bool isHungUp(const QSerialPort& port)
{
    pollfd end = {port.handle(), POLLOUT, 0};
    return poll(&end, 1, 0) < 0 || (end.revents & (POLLHUP | POLLERR)) != 0;
}

} // namespace cli
