// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/currentuser.h"

#include <vector>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include "cli/system/nextlogin.h"

namespace {

QStringList namesOf(const std::vector<gid_t>& ids)
{
    QStringList names;
    for (const gid_t id : ids) {
        const group* const found = getgrgid(id);
        names.append(found != nullptr ? QString::fromLocal8Bit(found->gr_name)
                                      : QString::number(id));
    }
    return names;
}

std::vector<gid_t> groupsOfLogin()
{
    std::vector<gid_t> ids(static_cast<std::size_t>(qMax(0, getgroups(0, nullptr))));
    ids.resize(
        static_cast<std::size_t>(qMax(0, getgroups(static_cast<int>(ids.size()), ids.data()))));
    ids.push_back(getegid());
    return ids;
}

} // namespace

namespace cli {

cMyUser currentUser()
{
    const passwd* const user = getpwuid(geteuid());
    if (user == nullptr) {
        return {QString::number(geteuid()), namesOf(groupsOfLogin()), {}};
    }
    const QString name = QString::fromLocal8Bit(user->pw_name);
    const std::vector<quint32> future = groupsOfNextLogin(user->pw_name, user->pw_gid);
    return {name, namesOf(groupsOfLogin()), namesOf({future.begin(), future.end()})};
}

} // namespace cli
