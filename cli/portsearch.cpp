// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/portsearch.h"

#include "cli/system/systemlook.h"
#include "device/protocol.h"

#include <QSerialPortInfo>

#include <algorithm>

namespace {

bool isOurs(const QSerialPortInfo& port)
{
    return port.vendorIdentifier() == device::vendorId &&
           (port.productIdentifier() == device::productId ||
            port.productIdentifier() == device::bootLoaderProductId);
}

} // namespace

namespace cli {

QVector<cMyFoundPort> findPorts()
{
    return findPorts(cMySystemLook());
}

QVector<cMyFoundPort> findPorts(const cMySystemLook& system)
{
    QVector<cMyFoundPort> found;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports) {
        if (isOurs(port)) {
            found.append({port.portName(), port.systemLocation(), port.productIdentifier(),
                          port.serialNumber(),
                          port.productIdentifier() == device::bootLoaderProductId});
        }
    }
    const QVector<cMyUsbDevice> usbDevices = system.usbDevices();
    for (const cMyUsbDevice& usb : usbDevices) {
        if (usb.product == device::bootLoaderProductId && usb.portName.isEmpty()) {
            found.append({usb.name, {}, usb.product, usb.serialNumber, true});
        }
    }
    std::sort(found.begin(), found.end(), [](const cMyFoundPort& one, const cMyFoundPort& other) {
        return one.name < other.name;
    });
    return found;
}

} // namespace cli
