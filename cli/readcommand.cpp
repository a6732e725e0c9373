// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/devicememory.h"
#include "cli/devicesession.h"
#include "cli/invocation.h"
#include "cli/outputfile.h"
#include "cli/settingsource.h"
#include "image/memoryarea.h"

#include <QJsonObject>

namespace cli {

cMyOutcome readDevice(const cMyInvocation& invocation, cMyConsole& console, cMyMemoryArea& image)
{
    cMyDeviceSession session(console);
    const cMyOutcome outcome = session.open(invocation);
    return outcome.isDone() ? readSettings(session, image) : outcome;
}

ExitStatus runRead(const cMyInvocation& invocation, cMyConsole& console)
{
    const QString path = invocation.operands.constFirst();
    cMyMemoryArea image;
    cMyDeviceIdentity identity;
    cMyDeviceSession session(console);
    cMyOutcome outcome = checkOutputFile(path, invocation.has("force"));
    if (outcome.isDone()) {
        outcome = session.open(invocation);
    }
    if (outcome.isDone()) {
        outcome = identify(session, identity);
    }
    if (outcome.isDone()) {
        outcome = readSettings(session, image);
    }
    if (outcome.isDone()) {
        outcome = writeImageFile(path, image, invocation, console);
    }
    if (!outcome.isDone()) {
        return console.tell(outcome);
    }
    if (console.isJson()) {
        console.result(QJsonObject{{QStringLiteral("port"), session.name()},
                                   {QStringLiteral("serialNumber"), identity.serialNumber},
                                   {QStringLiteral("file"), path}});
    }
    console.say(QStringLiteral("%1 %2: its settings are in %3")
                    .arg(session.name())
                    .arg(identity.serialNumber)
                    .arg(path));
    return ExitStatus::Done;
}

} // namespace cli
