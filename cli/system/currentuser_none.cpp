// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/currentuser.h"

namespace cli {

cMyUser currentUser()
{
    return {};
}

} // namespace cli
