// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_CURRENTUSER_H
#define MIOLKA_CLI_SYSTEM_CURRENTUSER_H

#include <QStringList>

/// Who runs the program. A value.
struct cMyUser
{
    QString name;
    QStringList groups;       ///< that this login has
    QStringList futureGroups; ///< that the next login gets; empty if not known
};

namespace cli {

/// Empty where a system has no users and groups as Unix has them.
[[nodiscard]] cMyUser currentUser();

} // namespace cli

#endif
