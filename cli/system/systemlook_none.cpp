// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/systemlook.h"

#include "cli/system/portaccess.h"

#include <utility>

cMySystemLook::cMySystemLook(QString root) : m_root(std::move(root)) {}

bool cMySystemLook::isBlind() const
{
    return true;
}

QVector<cMyUsbDevice> cMySystemLook::usbDevices() const
{
    return {};
}

std::optional<cMyNode> cMySystemLook::node(const QString& /*portPath*/) const
{
    return std::nullopt;
}

QString cMySystemLook::target(const QString& portPath) const
{
    return cli::linkedPort(portPath);
}

bool cMySystemLook::isSamePort(const QString& one, const QString& other) const
{
    return target(one) == target(other);
}

QVector<cMyProcess> cMySystemLook::holders(const QString& /*portPath*/) const
{
    return {};
}

QStringList cMySystemLook::staleLocks(const QString& /*portPath*/) const
{
    return {};
}

bool cMySystemLook::isRunning(const QString& /*processName*/) const
{
    return false;
}

/// Each system this is for brings its driver.
bool cMySystemLook::hasSerialDriver() const
{
    return true;
}

bool cMySystemLook::isHiddenFromModems(const QString& /*portName*/) const
{
    return false;
}

QString cMySystemLook::usbListing(quint16 /*vendor*/) const
{
    return {};
}

QString cMySystemLook::holderListing(const QString& /*portPath*/) const
{
    return {};
}
