// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/bootloader.h"
#include "cli/commands.h"
#include "cli/confirmation.h"
#include "cli/console.h"
#include "cli/devicesession.h"
#include "device/protocol.h"
#include "device/requests.h"

using cli::ExitStatus;

namespace {

/// A command word with what the user is asked before and told afterwards.
struct Service
{
    const char* word;
    const char* question; ///< behind the port's name
    QString done;         ///< likewise
    bool mayLeaveAtOnce;  ///< starting anew, it may be gone before it has answered
};

const Service resetService = {
    device::resetWord,
    "settings and sounds stay, and it leaves its port for a moment. Start it anew?",
    "it starts anew and leaves its port for a moment: wait until it is back; if it does not come "
    "back, plug it in anew",
    true};

const Service clearService = {
    device::clearWord,
    "greatest depth, dive time and all other statistics cannot be brought back. Clear them?",
    "its statistics are cleared", false};

const Service offService = {
    device::offWord,
    "it goes off when it is unplugged, and comes on again at USB or a charger. Switch it off?",
    "it goes off when it is unplugged; it is of no use under water until it was at USB or a "
    "charger again",
    false};

const Service bootService = {
    device::bootWord,
    "its boot loader only takes new firmware from another program, and it understands nothing else "
    "until that program starts it again. Start the boot loader?",
    QStringLiteral("it is in its boot loader now; ") + cli::bootLoaderWayOut(), true};

ExitStatus runService(const Service& service, const cMyInvocation& invocation, cMyConsole& console)
{
    cMyDeviceSession session(console);
    cMyOutcome outcome = session.open(invocation);
    if (outcome.isDone()) {
        outcome = cli::confirm(
            invocation, console,
            QStringLiteral("%1: %2").arg(session.name(), QLatin1String(service.question)));
    }
    if (outcome.isDone()) {
        outcome = session.exchange(QStringLiteral("Sending"), device::commandRequest(service.word),
                                   cMyDeviceSession::Answers::Any);
        if (service.mayLeaveAtOnce && session.isGone() && session.hasSent()) {
            outcome = {};
        }
    }
    if (!outcome.isDone()) {
        return console.tell(outcome);
    }
    console.say(QStringLiteral("%1: %2").arg(session.name(), service.done));
    return ExitStatus::Done;
}

} // namespace

namespace cli {

ExitStatus runReset(const cMyInvocation& invocation, cMyConsole& console)
{
    return runService(resetService, invocation, console);
}

ExitStatus runClearStats(const cMyInvocation& invocation, cMyConsole& console)
{
    return runService(clearService, invocation, console);
}

ExitStatus runPowerOff(const cMyInvocation& invocation, cMyConsole& console)
{
    return runService(offService, invocation, console);
}

ExitStatus runBoot(const cMyInvocation& invocation, cMyConsole& console)
{
    return runService(bootService, invocation, console);
}

} // namespace cli
