// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/nextlogin.h"

#include <algorithm>

#include <grp.h>

namespace cli {

std::vector<quint32> groupsOfNextLogin(const char* user, quint32 ownGroup)
{
    int count = 0;
    getgrouplist(user, ownGroup, nullptr, &count);
    std::vector<gid_t> ids(static_cast<std::size_t>(count));
    getgrouplist(user, ownGroup, ids.data(), &count);
    // The list may have changed in between.
    ids.resize(std::min(ids.size(), static_cast<std::size_t>(count)));
    return ids;
}

} // namespace cli
