// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PORTPROBE_H
#define MIOLKA_CLI_PORTPROBE_H

#include <QString>

/// Whether a serial port can be opened, and why not. A value.
struct cMyPortProbe
{
    /// What came of opening it.
    enum class Access {
        Free,
        Busy,      ///< another program has it
        Forbidden, ///< the system does not let this user open it
        Faulty     ///< it is gone, or no serial port
    };

    Access access = Access::Free;
    QString reason; ///< in the system's words; empty if it can be opened
};

namespace cli {

/// Opens the port for itself alone and closes it again, without sending anything.
[[nodiscard]] cMyPortProbe probePort(const QString& path);

} // namespace cli

#endif
