// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/diagnosis.h"
#include "cli/invocation.h"

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
    cMyExamination examination;
    examination.ports = findPorts(examination.system);
    examination.user = currentUser();
    examination.chosenPort = invocation.value("port");
    const QVector<cMyFinding> findings = diagnose(examination);
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
