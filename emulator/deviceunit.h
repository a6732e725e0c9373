// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DEVICEUNIT_H
#define MIOLKA_EMULATOR_DEVICEUNIT_H

#include "device/protocol.h"
#include "emulator/virtualdevice.h"
#include "emulator/virtualport.h"

#include <QObject>

class QTimer;

/// One device with its port and its cable: comes and goes as it is plugged in, reset or started as
/// boot loader. The boot loader takes everything and answers nothing.
class cMyDeviceUnit : public QObject
{
    Q_OBJECT

public:
    /// How long the port stays away in a reset, in ms.
    static constexpr int restartTime = 1000;

    /// Number counts the units from 0; the serial number follows from it.
    cMyDeviceUnit(int number, quint32 seed, QObject* parent = nullptr);

    /// Of the unit, from 0 on.
    [[nodiscard]] int number() const { return m_number; }

    /// Both live as long as the unit.
    [[nodiscard]] cMyVirtualDevice& device() { return m_device; }
    [[nodiscard]] cMyVirtualPort& port() { return m_port; }

    /// The cable; both do nothing where it is so already.
    void plug();
    void unplug();

signals:
    /// The port is there, behind this pseudo-terminal and with this product number.
    void appeared(int number, const QString& terminal, quint16 product);

    /// The port goes; it is closed when the receivers have returned.
    void disappeared(int number);

    /// The cable was pulled, or the device vanished as if it had been.
    void unplugged(int number);

    /// The system has no pseudo-terminal for the port.
    void failed(const QString& message);

private:
    void restartAs(quint16 product);
    void proceed();
    void appear();
    void disappear();

    int m_number;
    cMyVirtualDevice m_device;
    cMyVirtualPort m_port;
    QTimer* m_restart;
    quint16 m_product = device::productId;
    bool m_plugged = false;
};

#endif
