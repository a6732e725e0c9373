// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/ttylist.h"

namespace device {

std::optional<std::vector<TtyEntry>> ttyEntries()
{
    return std::nullopt;
}

} // namespace device
