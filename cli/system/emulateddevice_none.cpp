// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/emulateddevice.h"

cMyEmulatedDevice::~cMyEmulatedDevice() = default;

/// A virtual device needs a pseudo-terminal of Linux.
QString cMyEmulatedDevice::start()
{
    return {};
}

void cMyEmulatedDevice::run() {}
