// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/settingsource.h"

namespace {

cli::ExitStatus pending(cMyConsole& console)
{
    console.error(QStringLiteral("not there yet"));
    return cli::ExitStatus::Usage;
}

} // namespace

namespace cli {

ExitStatus runRehearse(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}

} // namespace cli
