// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/deviceunit.h"

#include <QTimer>

cMyDeviceUnit::cMyDeviceUnit(int number, quint32 seed, QObject* parent)
    : QObject(parent), m_number(number), m_port(&m_device, seed), m_restart(new QTimer(this))
{
    constexpr int firstSerialNumber = 1001;
    m_device.setSerialNumber(static_cast<quint16>(firstSerialNumber + number));
    m_restart->setSingleShot(true);
    connect(m_restart, &QTimer::timeout, this, &cMyDeviceUnit::proceed);
    connect(&m_port, &cMyVirtualPort::vanished, this, &cMyDeviceUnit::unplug);
    connect(&m_device, &cMyVirtualDevice::resetRequested, this,
            [this] { restartAs(device::productId); });
    connect(&m_device, &cMyVirtualDevice::bootRequested, this,
            [this] { restartAs(device::bootLoaderProductId); });
}

void cMyDeviceUnit::plug()
{
    if (m_plugged) {
        return;
    }
    m_plugged = true;
    m_product = device::productId;
    m_device.plugged();
    appear();
}

void cMyDeviceUnit::unplug()
{
    if (!m_plugged) {
        return;
    }
    m_plugged = false;
    m_restart->stop();
    disappear();
    m_device.unplugged();
    emit unplugged(m_number);
}

void cMyDeviceUnit::restartAs(quint16 product)
{
    if (!m_plugged) {
        return;
    }
    // The answer must get through first.
    constexpr int untilItGoes = 100;
    m_product = product;
    m_restart->start(m_port.latency() + untilItGoes);
}

void cMyDeviceUnit::proceed()
{
    if (m_port.isPlugged()) {
        disappear();
        m_restart->start(restartTime);
    } else {
        m_device.plugged();
        appear();
    }
}

void cMyDeviceUnit::appear()
{
    m_port.setDevice(m_product == device::productId ? &m_device : nullptr);
    if (!m_port.plug()) {
        emit failed(QStringLiteral("the system has no pseudo-terminal to give"));
        return;
    }
    emit appeared(m_number, m_port.path(), m_product);
}

void cMyDeviceUnit::disappear()
{
    if (!m_port.isPlugged()) {
        return;
    }
    emit disappeared(m_number);
    m_port.unplug();
}
