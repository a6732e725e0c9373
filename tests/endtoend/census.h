// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_CENSUS_H
#define MIOLKA_ENDTOEND_CENSUS_H

#include <QtGlobal>

namespace remote {

/// Knows every QObject of the process that was made while this lives, through Qt's own hooks for
/// that: timers are often members of objects, and no object's children lead to them. There may be
/// one at a time; to be made and asked in the GUI thread.
class Census
{
public:
    Census();
    ~Census();
    Q_DISABLE_COPY_MOVE(Census)

    /// Objects that live now, of all threads.
    [[nodiscard]] int objects() const;

    /// Timers that run now in the GUI thread, of whichever kind.
    [[nodiscard]] int timers() const;
};

} // namespace remote

#endif
