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

ExitStatus runShow(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runGet(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runSet(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runDiff(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runCheck(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runNew(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}

ExitStatus runRehearse(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}

} // namespace cli
