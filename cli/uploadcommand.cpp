// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/confirmation.h"
#include "cli/console.h"
#include "cli/devicememory.h"
#include "cli/devicesession.h"
#include "cli/invocation.h"
#include "cli/librarycheck.h"
#include "cli/shellword.h"
#include "cli/wayback.h"
#include "device/requests.h"

#include <QJsonObject>

namespace {

QString summary(const QString& path, const cMyCheckedLibrary& library)
{
    return QStringLiteral("%1: %2, %3 bytes in %4 lines")
        .arg(path, cli::libraryKind(library))
        .arg(library.bytes)
        .arg(library.lines.size());
}

/// What is to be done about a library of which only a part has arrived.
cMyOutcome incomplete(cMyOutcome outcome, const cMyInvocation& invocation)
{
    outcome.reasons += QStringLiteral("the library on the device is incomplete: it may speak "
                                      "nonsense or nothing; do not dive with it");
    if (invocation.has("emulator")) {
        outcome.reasons += cli::virtualDeviceIsGone();
        return outcome;
    }
    QString command =
        QStringLiteral("miolkactl upload ") + cli::shellWord(invocation.operands.constFirst());
    if (invocation.has("port")) {
        command += QStringLiteral(" --port ") + cli::shellWord(invocation.value("port"));
    }
    outcome.reasons += QStringLiteral("send it again from the start with: %1").arg(command);
    return outcome;
}

/// A device that does not say how much it holds gets what it is sent: the size alone is no reason
/// to refuse a library.
cMyOutcome checkSize(const QString& path, const cMyCheckedLibrary& library,
                     const cMyDeviceIdentity& identity, cMyConsole& console)
{
    if (identity.memorySize > 0) {
        return cli::checkLibrarySize(path, library, identity.memorySize);
    }
    console.say(QStringLiteral("the device does not say how large its memory is; whether the "
                               "library fits was not checked"));
    return {};
}

} // namespace

namespace cli {

ExitStatus runUpload(const cMyInvocation& invocation, cMyConsole& console)
{
    const QString path = invocation.operands.constFirst();
    cMyCheckedLibrary library;
    cMyDeviceIdentity identity;
    cMyDeviceSession session(console);
    cMyOutcome outcome = checkLibrary(path, library);
    if (outcome.isDone()) {
        console.say(summary(path, library));
        outcome = session.open(invocation);
    }
    if (outcome.isDone()) {
        outcome = identify(session, identity);
    }
    if (outcome.isDone()) {
        outcome = checkSize(path, library, identity, console);
    }
    if (outcome.isDone()) {
        outcome =
            confirm(invocation, console,
                    QStringLiteral("%1 %2: the library that it holds is lost, and cannot be read "
                                   "back. Replace it by %3?")
                        .arg(session.name())
                        .arg(identity.serialNumber)
                        .arg(path));
    }
    if (!outcome.isDone()) {
        return console.tell(outcome);
    }
    session.beMorePatient();
    outcome =
        session.exchange(QStringLiteral("Uploading"), device::writeRequest(FLASH, library.lines),
                         cMyDeviceSession::Answers::Any);
    if (!outcome.isDone()) {
        // What a word alone does to the old library is not known.
        return console.tell(session.hasSent() ? incomplete(outcome, invocation)
                                              : cli::unchanged(outcome));
    }
    if (console.isJson()) {
        console.result(QJsonObject{{QStringLiteral("port"), session.name()},
                                   {QStringLiteral("serialNumber"), identity.serialNumber},
                                   {QStringLiteral("file"), path},
                                   {QStringLiteral("bytes"), library.bytes},
                                   {QStringLiteral("lines"), library.lines.size()}});
    }
    console.say(
        QStringLiteral("%1 %2: every line was sent and answered; \"miolkactl status\" shows "
                       "the library and the self-test")
            .arg(session.name())
            .arg(identity.serialNumber));
    return ExitStatus::Done;
}

} // namespace cli
