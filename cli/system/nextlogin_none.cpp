// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/nextlogin.h"

namespace cli {

std::vector<quint32> groupsOfNextLogin(const char* /*user*/, quint32 /*ownGroup*/)
{
    return {};
}

} // namespace cli
