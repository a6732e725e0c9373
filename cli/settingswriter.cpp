// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/settingswriter.h"

#include "cli/confirmation.h"
#include "cli/console.h"
#include "cli/devicesession.h"
#include "cli/invocation.h"
#include "cli/shellword.h"
#include "cli/system/interruption.h"
#include "cli/wayback.h"

using cli::ExitStatus;

namespace {

/// Where bytes are compared, the version of the program counts like all others.
QVector<cMySettingsDifference> allCounted(QVector<cMySettingsDifference> differences)
{
    for (cMySettingsDifference& each : differences) {
        each.isVersion = false;
    }
    return differences;
}

} // namespace

cMySettingsWriter::cMySettingsWriter(cMyDeviceSession& session, const cMyInvocation& invocation,
                                     cMyConsole& console)
    : m_session(session), m_invocation(invocation), m_console(console), m_backups(invocation)
{
}

cMyOutcome cMySettingsWriter::prepare(const cMyMemoryArea& image)
{
    m_image = &image;
    cMyOutcome outcome = cli::identify(m_session, m_identity);
    if (outcome.isDone() && m_invocation.has("yes") && !warning().isEmpty()) {
        return {ExitStatus::NoDevice, {warning() + QStringLiteral("; without --yes it asks")}};
    }
    if (outcome.isDone()) {
        outcome = cli::readSettings(m_session, m_before);
    }
    if (outcome.isDone()) {
        m_changes = cli::differences(m_before, image);
        if (m_invocation.has("restore")) {
            m_changes = allCounted(m_changes);
        }
    }
    return outcome;
}

bool cMySettingsWriter::isNeeded() const
{
    return cli::isDifferent(m_changes);
}

QString cMySettingsWriter::warning() const
{
    const std::optional<int> owner = cli::serialNumberInName(m_invocation.operands.constFirst());
    if (!m_invocation.has("restore") || !owner || *owner == m_identity.serialNumber) {
        return {};
    }
    return QStringLiteral("%1: this is a backup of device %2, and %3 is device %4")
        .arg(m_invocation.operands.constFirst())
        .arg(*owner)
        .arg(m_session.name())
        .arg(m_identity.serialNumber);
}

cMyOutcome cMySettingsWriter::write()
{
    if (cli::isInterrupted()) {
        return {ExitStatus::Cancelled,
                {QStringLiteral("%1: cancelled before anything was written").arg(deviceName())}};
    }
    cMyOutcome kept = m_backups.keepImage(m_before, origin());
    if (!kept.isDone()) {
        return kept;
    }
    m_console.say(QStringLiteral("%1: what it held is kept in %2").arg(deviceName(), backup()));
    QVector<cMySettingsDifference> found;
    cMyOutcome stored = store(*m_image, found);
    if (!stored.isDone()) {
        return withWayBack(m_session.hasWritten() ? stored : cli::unchanged(stored));
    }
    return found.isEmpty() ? cMyOutcome() : mismatch(found);
}

cMyOutcome cMySettingsWriter::store(const cMyMemoryArea& image,
                                    QVector<cMySettingsDifference>& found)
{
    cMyOutcome written = cli::writeSettings(m_session, image);
    if (!written.isDone()) {
        return written;
    }
    cMyMemoryArea after;
    cMyOutcome read = cli::readSettings(m_session, after);
    found = allCounted(cli::differences(image, after));
    return read;
}

cMyOutcome cMySettingsWriter::mismatch(const QVector<cMySettingsDifference>& found)
{
    m_console.error(
        QStringLiteral("%1: it does not hold what was written to it:").arg(deviceName()));
    for (const QString& line : cli::differenceLines(found)) {
        m_console.error(line);
    }
    cMyOutcome outcome{
        ExitStatus::Mismatch,
        {QStringLiteral("%1: it does not hold what was written to it").arg(deviceName())}};
    const bool isWanted =
        cli::confirm(m_invocation, m_console,
                     QStringLiteral("%1: write back what it held before?").arg(deviceName()))
            .isDone();
    if (!isWanted) {
        return withWayBack(outcome);
    }
    QVector<cMySettingsDifference> left;
    const cMyOutcome restored = store(m_before, left);
    if (restored.isDone() && left.isEmpty()) {
        outcome.reasons += QStringLiteral("it holds again what it held before");
        return outcome;
    }
    outcome.reasons += QStringLiteral("what it held before could not be written back, either");
    outcome.reasons += restored.reasons;
    outcome.reasons += cli::differenceLines(left);
    return withWayBack(outcome);
}

cMyOutcome cMySettingsWriter::withWayBack(cMyOutcome outcome) const
{
    if (m_session.hasWritten()) {
        outcome.reasons += QStringLiteral("do not dive with it");
    }
    outcome.reasons += QStringLiteral("what it held before is kept in %1").arg(backup());
    if (m_invocation.has("emulator")) {
        outcome.reasons += cli::virtualDeviceIsGone();
        return outcome;
    }
    QString command = QStringLiteral("miolkactl write --restore %1").arg(cli::shellWord(backup()));
    if (m_invocation.has("port")) {
        command += QStringLiteral(" --port ") + cli::shellWord(m_invocation.value("port"));
    } else if (m_invocation.has("all")) {
        command += QStringLiteral(" --port ") + cli::shellWord(m_session.name());
    }
    outcome.reasons += QStringLiteral("write that back with: %1").arg(command);
    return outcome;
}

QString cMySettingsWriter::deviceName() const
{
    return QStringLiteral("%1 %2").arg(m_session.name()).arg(m_identity.serialNumber);
}

QString cMySettingsWriter::origin() const
{
    QString origin = deviceName();
    for (QChar& character : origin) {
        if (!character.isLetterOrNumber()) {
            character = QLatin1Char('-');
        }
    }
    return origin;
}
