// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_BOOTLOADER_H
#define MIOLKA_CLI_BOOTLOADER_H

#include <QString>

namespace cli {

/// How a device leaves its boot loader, as a clause that begins with a small letter: every command
/// that meets a boot loader says the same.
[[nodiscard]] QString bootLoaderWayOut();

} // namespace cli

#endif
