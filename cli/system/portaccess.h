// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_PORTACCESS_H
#define MIOLKA_CLI_SYSTEM_PORTACCESS_H

#include <QString>

class QSerialPort;

/// Serial ports by the names and paths that the system gives them.
namespace cli {

/// Of the port of that name, such as "ttyACM0" or "COM3"; a path stays as it is.
[[nodiscard]] QString portPath(const QString& name);

/// As short as portPath() understands it.
[[nodiscard]] QString portName(const QString& path);

/// Whether the system has something at the path now, be it a port or not where ports are files.
[[nodiscard]] bool isPortThere(const QString& path);

/// The path of the port itself, where the path is that of a link to it.
[[nodiscard]] QString linkedPort(const QString& path);

/// Whether the user has the right to open the port, whoever has it now.
[[nodiscard]] bool isPortAllowed(const QString& path);

/// Whether the device behind the open port has gone.
[[nodiscard]] bool isHungUp(const QSerialPort& port);

} // namespace cli

#endif
