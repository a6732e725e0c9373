// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_TTYWATCH_H
#define MIOLKA_DEVICE_TTYWATCH_H

#include "device/ttylist.h"

#include <QDeadlineTimer>

/// Tells when it is worth asking the system for its serial ports, which costs some milliseconds.
/// Where the system keeps a cheap list of its ports (Linux), that is when the list has changed, for
/// a while after that, since what is known of a port may arrive later than its name, and now and
/// then anyway; elsewhere, and where that list cannot be read, always.
class cMyTtyWatch
{
public:
    cMyTtyWatch();

    /// To be asked whenever the ports could be looked at; true the first time.
    bool isWorthLooking();

private:
    std::optional<std::vector<device::TtyEntry>> m_entries;
    QDeadlineTimer m_restless; ///< until then the last change may not be complete
    QDeadlineTimer m_nextLook;
};

#endif
