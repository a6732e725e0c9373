// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_MEMORYTYPE_H
#define MIOLKA_IMAGE_MEMORYTYPE_H

#include <QMetaType>

/// The kinds of memory in the device. Only EEPROM carries settings.
enum MemoryType {
    EEPROM = 0,
    FLASH = 1,
    OTP = 2,
    RAM = 3,
    ROM = 4,
};

Q_DECLARE_METATYPE(MemoryType)

#endif
