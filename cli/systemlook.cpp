// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/systemlook.h"

#include "device/protocol.h"

#include <QDir>
#include <QFile>

namespace {

/// The files here are a line each; none of them is longer than a page of memory.
QString readLine(const QString& path)
{
    constexpr qint64 longest = 4096;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longest)).trimmed()
                                          : QString();
}

quint16 readId(const QString& path)
{
    constexpr int base = 16;
    return readLine(path).toUShort(nullptr, base);
}

/// A serial port lies below one of the device's interfaces.
QString portBelow(const QDir& device)
{
    const QStringList interfaces = device.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& interface : interfaces) {
        const QDir ttys(device.filePath(interface + QStringLiteral("/tty")));
        const QStringList names = ttys.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        if (!names.isEmpty()) {
            return names.first();
        }
    }
    return {};
}

} // namespace

cMySystemLook::cMySystemLook(const QString& root) : m_root(root) {}

QString cMySystemLook::path(const QString& absolute) const
{
    return QDir::cleanPath(m_root + absolute);
}

QVector<cMyUsbDevice> cMySystemLook::usbDevices() const
{
    QVector<cMyUsbDevice> found;
    const QDir bus(path(QStringLiteral("/sys/bus/usb/devices")));
    const QStringList names = bus.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        const QDir usb(bus.filePath(name));
        const quint16 product = readId(usb.filePath(QStringLiteral("idProduct")));
        const bool isOurs =
            readId(usb.filePath(QStringLiteral("idVendor"))) == device::vendorId &&
            (product == device::productId || product == device::bootLoaderProductId);
        if (isOurs) {
            found.append(
                {name, product, readLine(usb.filePath(QStringLiteral("serial"))), portBelow(usb)});
        }
    }
    return found;
}
