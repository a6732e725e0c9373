// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"

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
ExitStatus runPorts(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runDoctor(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}

ExitStatus runStatus(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runRead(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runWrite(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runVerify(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runUpload(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runReset(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runClearStats(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runPowerOff(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}
ExitStatus runBoot(const cMyInvocation& /*i*/, cMyConsole& console)
{
    return pending(console);
}

ExitStatus runRehearse(const cMyInvocation& /*i*/, cMyConsole& console)
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

cMyOutcome readDevice(const cMyInvocation& /*i*/, cMyConsole& /*console*/, cMyMemoryArea& /*image*/)
{
    return {ExitStatus::Protocol, {QStringLiteral("not there yet")}};
}

QVector<cMySettingsDifference> differences(const cMyMemoryArea& /*b*/, const cMyMemoryArea& /*a*/)
{
    return {};
}

bool isDifferent(const QVector<cMySettingsDifference>& differences)
{
    return !differences.isEmpty();
}

QStringList differenceLines(const QVector<cMySettingsDifference>& /*differences*/)
{
    return {};
}

} // namespace cli
