// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_SERIALLINE_H
#define MIOLKA_DEVICE_SERIALLINE_H

#include <QString>

class QSerialPort;

namespace device {

/// Opens the port of that name or path with the settings of the device's serial line: 9600 baud, 8
/// data bits, no parity, 1 stop bit, no flow control. False if it cannot be opened, which the
/// port's error tells, or if there is no name, which is no error of the port.
[[nodiscard]] bool openPort(QSerialPort& port, const QString& name);

} // namespace device

#endif
