// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/serialline.h"

#include <QSerialPort>

namespace device {

bool openPort(QSerialPort& port, const QString& name)
{
    port.setPortName(name);
    port.setBaudRate(QSerialPort::Baud9600);
    port.setDataBits(QSerialPort::Data8);
    port.setParity(QSerialPort::NoParity);
    port.setStopBits(QSerialPort::OneStop);
    port.setFlowControl(QSerialPort::NoFlowControl);
    return !name.isEmpty() && port.open(QIODevice::ReadWrite);
}

} // namespace device
