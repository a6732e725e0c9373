// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/emulateddevice.h"

#include "emulator/virtualdevice.h"
#include "emulator/virtualport.h"

cMyEmulatedDevice::~cMyEmulatedDevice()
{
    quit();
    wait();
}

QString cMyEmulatedDevice::start()
{
    QThread::start();
    return m_path.get_future().get();
}

void cMyEmulatedDevice::run()
{
    cMyVirtualDevice device;
    cMyVirtualPort port(&device);
    m_path.set_value(port.plug() ? port.path() : QString());
    exec();
}
