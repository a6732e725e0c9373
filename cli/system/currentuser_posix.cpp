// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/currentuser.h"

#include <vector>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace {

QStringList groupsOfLogin()
{
    std::vector<gid_t> ids(static_cast<std::size_t>(qMax(0, getgroups(0, nullptr))));
    ids.resize(
        static_cast<std::size_t>(qMax(0, getgroups(static_cast<int>(ids.size()), ids.data()))));
    ids.push_back(getegid());
    QStringList names;
    for (const gid_t id : ids) {
        const group* const found = getgrgid(id);
        names.append(found != nullptr ? QString::fromLocal8Bit(found->gr_name)
                                      : QString::number(id));
    }
    return names;
}

} // namespace

namespace cli {

/// The groups of the next login are asked for in a way of its own on each system; none are told.
cMyUser currentUser()
{
    const passwd* const user = getpwuid(geteuid());
    return {user != nullptr ? QString::fromLocal8Bit(user->pw_name) : QString::number(geteuid()),
            groupsOfLogin(),
            {}};
}

} // namespace cli
