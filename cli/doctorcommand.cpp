// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/devicesession.h"
#include "cli/diagnosis.h"
#include "cli/invocation.h"
#include "cli/system/interruption.h"
#include "device/protocol.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

void print(const cMyFinding& finding, cMyConsole& console)
{
    console.result(finding.port.isEmpty()
                       ? finding.text
                       : QStringLiteral("%1: %2").arg(finding.port, finding.text));
    for (const cMyRemedy& remedy : finding.remedies) {
        console.result(QStringLiteral("  %1%2").arg(
            remedy.text, QLatin1String(remedy.commands.isEmpty() ? "." : ":")));
        for (const QString& command : remedy.commands) {
            // Without a margin, so that the lines can be taken to a shell as they are.
            console.result(command);
        }
    }
}

/// By a line that changes nothing but that the device leaves a mode that it was left in.
bool doesAnswer(const QString& path, const std::shared_ptr<cMyTrace>& trace, cMyConsole& console)
{
    cMyFoundPort port;
    port.name = path;
    port.path = path;
    cMyDeviceSession session(console);
    session.setTrace(trace, 0);
    const QString line = QLatin1String(device::rootWord) + QLatin1String(device::lineEnd);
    return session.open(port).isDone() && session
                                              .exchange(QStringLiteral("asking the device"), {line},
                                                        cMyDeviceSession::Answers::Any)
                                              .isDone();
}

QJsonObject objectOf(const cMyFinding& finding)
{
    QJsonArray remedies;
    for (const cMyRemedy& remedy : finding.remedies) {
        remedies.append(
            QJsonObject{{QStringLiteral("text"), remedy.text},
                        {QStringLiteral("commands"), QJsonArray::fromStringList(remedy.commands)}});
    }
    return {{QStringLiteral("kind"), QLatin1String(finding.kind)},
            {QStringLiteral("port"), finding.port},
            {QStringLiteral("text"), finding.text},
            {QStringLiteral("remedies"), remedies},
            {QStringLiteral("status"), static_cast<int>(finding.status)}};
}

} // namespace

namespace cli {

ExitStatus runDoctor(const cMyInvocation& invocation, cMyConsole& console)
{
    std::shared_ptr<cMyTrace> trace;
    const cMyOutcome traceOutcome = openTrace(invocation, trace);
    if (!traceOutcome.isDone()) {
        return console.tell(traceOutcome);
    }
    cMyExamination examination;
    examination.ports = findPorts(examination.system);
    examination.user = currentUser();
    examination.chosenPort = invocation.value("port");
    examination.answers = [&](const QString& path) {
        return doesAnswer(path, trace, console);
    };
    const QVector<cMyFinding> findings = diagnose(examination);
    if (isInterrupted()) {
        console.error(QStringLiteral("cancelled"));
        return ExitStatus::Cancelled;
    }
    const ExitStatus status = statusOf(findings);
    if (!console.isJson()) {
        for (const cMyFinding& finding : findings) {
            print(finding, console);
        }
        return status;
    }
    QJsonArray array;
    for (const cMyFinding& finding : findings) {
        array.append(objectOf(finding));
    }
    console.result(QJsonObject{{QStringLiteral("findings"), array},
                               {QStringLiteral("status"), static_cast<int>(status)}});
    return status;
}

} // namespace cli
