// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PORTSEARCH_H
#define MIOLKA_CLI_PORTSEARCH_H

#include <QString>
#include <QVector>

class cMySystemLook;

/// A device that is attached. A value.
struct cMyFoundPort
{
    QString name;              ///< of the serial port; of a boot loader without one, its USB name
    QString path;              ///< of the node to open; empty where there is no serial port
    quint16 product = 0;       ///< its USB product number
    QString serialNumber;      ///< empty if the device tells none
    bool isBootLoader = false; ///< takes a new firmware only
};

namespace cli {

/// The devices and boot loaders that the system knows of, in the order of their names. A boot
/// loader is found on USB, too, where it has no serial port.
[[nodiscard]] QVector<cMyFoundPort> findPorts();

/// Likewise, with the USB devices of that system.
[[nodiscard]] QVector<cMyFoundPort> findPorts(const cMySystemLook& system);

} // namespace cli

#endif
