// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_NEXTLOGIN_H
#define MIOLKA_CLI_SYSTEM_NEXTLOGIN_H

#include <vector>

#include <QtGlobal>

namespace cli {

/// Numbers of the groups that the named user, whose own group is ownGroup, has from the next login
/// on. Empty where they are not asked for: Unix has no common way.
[[nodiscard]] std::vector<quint32> groupsOfNextLogin(const char* user, quint32 ownGroup);

} // namespace cli

#endif
