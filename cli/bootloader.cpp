// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/bootloader.h"

namespace cli {

QString bootLoaderWayOut()
{
    return QStringLiteral("leave that mode with [Start Application] in the program for firmware "
                          "updates, then plug the device in anew");
}

} // namespace cli
