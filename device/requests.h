// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_REQUESTS_H
#define MIOLKA_DEVICE_REQUESTS_H

#include "image/memorytype.h"

#include <QStringList>

/// The lines of each exchange with the device, in the order in which they are sent, each with its
/// line end. Pure functions; any thread may call them.
namespace device {

/// Writes Intel HEX records to a memory, as given. A number that stands for no memory sends no word
/// that selects one.
[[nodiscard]] QStringList writeRequest(MemoryType area, const QStringList& records);

/// Asks for the device's own bytes wherever one of the records lies.
[[nodiscard]] QStringList readRequest(MemoryType area, const QStringList& records);

/// Asks for everything that statusTexts() shows.
[[nodiscard]] QStringList statusRequest();

/// One command word.
[[nodiscard]] QStringList commandRequest(const char* word);

} // namespace device

#endif
