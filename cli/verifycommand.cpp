// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/differencesjson.h"
#include "cli/invocation.h"
#include "cli/settingsource.h"
#include "image/memoryarea.h"

#include <QJsonArray>
#include <QJsonObject>

namespace cli {

ExitStatus runVerify(const cMyInvocation& invocation, cMyConsole& console)
{
    cMyMemoryArea expected;
    cMyMemoryArea held;
    cMyOutcome outcome = loadSettings(invocation.operands.constFirst(), expected);
    if (outcome.isDone()) {
        outcome = readDevice(invocation, console, held);
    }
    if (!outcome.isDone()) {
        return console.tell(outcome);
    }
    const QVector<cMySettingsDifference> found = differences(expected, held);
    const bool areSame = !isDifferent(found);
    if (console.isJson()) {
        console.result(QJsonObject{{QStringLiteral("isDifferent"), !areSame},
                                   {QStringLiteral("differences"), differencesJson(found)}});
    } else {
        for (const QString& line : differenceLines(found)) {
            console.result(line);
        }
    }
    console.say(areSame ? QStringLiteral("the device holds these settings")
                        : QStringLiteral("the device holds other settings (file -> device)"));
    return areSame ? ExitStatus::Done : ExitStatus::Differs;
}

} // namespace cli
