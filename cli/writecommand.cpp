// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/confirmation.h"
#include "cli/console.h"
#include "cli/devicesession.h"
#include "cli/differencesjson.h"
#include "cli/invocation.h"
#include "cli/portchoice.h"
#include "cli/settingsource.h"
#include "cli/settingswriter.h"
#include "editor/fieldcodec.h"
#include "emulator/trace.h"
#include "image/strictsettings.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <vector>

using cli::ExitStatus;

namespace {

/// One device that is written to, and what became of it.
struct Target
{
    Target(const cMyInvocation& invocation, cMyConsole& console)
        : session(console), writer(session, invocation, console)
    {
    }

    [[nodiscard]] bool isDue() const { return outcome.isDone() && writer.isNeeded(); }

    cMyDeviceSession session;
    cMySettingsWriter writer;
    cMyOutcome outcome;
    bool isWritten = false;
    bool isTold = false; ///< the outcome was, before the question
};

/// Writes one image to the devices that the invocation chooses.
class Writing
{
public:
    Writing(const cMyInvocation& invocation, cMyConsole& console)
        : m_invocation(invocation), m_console(console)
    {
    }

    ExitStatus run()
    {
        cMyOutcome outcome = load();
        if (outcome.isDone()) {
            outcome = open();
        }
        if (!outcome.isDone()) {
            return m_console.tell(outcome);
        }
        for (const auto& target : m_targets) {
            if (target->outcome.isDone()) {
                target->outcome = target->writer.prepare(m_image);
            }
        }
        tellBeforeTheQuestion();
        outcome = confirmed();
        if (!outcome.isDone()) {
            return m_console.tell(outcome);
        }
        for (const auto& target : m_targets) {
            if (target->isDue()) {
                target->outcome = target->writer.write();
                target->isWritten = target->outcome.isDone();
            }
        }
        return report();
    }

private:
    [[nodiscard]] cMyOutcome load()
    {
        if (m_invocation.has("all") && m_invocation.has("port")) {
            return {ExitStatus::Usage, {QStringLiteral("--all and --port exclude each other")}};
        }
        if (m_invocation.has("restore")) {
            return loadBackup(m_invocation.operands.constFirst());
        }
        cMyOutcome outcome = cli::loadSettings(m_invocation.operands.constFirst(), m_image);
        if (outcome.isDone()) {
            m_image.setData(0, editor::versionBytes(QStringLiteral(MIOLKA_VERSION)));
        }
        return outcome;
    }

    /// Bytes that a backup does not give would be taken from elsewhere, and nobody's.
    [[nodiscard]] cMyOutcome loadBackup(const QString& path)
    {
        const cMyStrictSettings settings = image::readStrictSettings(path);
        cMyOutcome outcome = cli::applySettings(path, settings, m_image);
        if (!outcome.isDone() || settings.isGiven.all()) {
            return outcome;
        }
        return {ExitStatus::BadFile,
                {QStringLiteral("%1: gives only %2 of %3 bytes, and is no backup; \"miolkactl "
                                "write\" without --restore fills up with the default settings")
                     .arg(path)
                     .arg(settings.isGiven.count())
                     .arg(settings.isGiven.size())}};
    }

    Target& addTarget()
    {
        m_targets.push_back(std::make_unique<Target>(m_invocation, m_console));
        return *m_targets.back();
    }

    /// A port of several that cannot be opened is reported in the end like any other failure.
    [[nodiscard]] cMyOutcome open()
    {
        if (!m_invocation.has("all") || m_invocation.has("emulator")) {
            return addTarget().session.open(m_invocation);
        }
        QVector<cMyFoundPort> ports;
        cMyOutcome outcome = cli::chooseAllPorts(ports);
        std::shared_ptr<cMyTrace> trace;
        if (outcome.isDone()) {
            outcome = cli::openTrace(m_invocation, trace);
        }
        if (!outcome.isDone()) {
            return outcome;
        }
        if (trace) {
            trace->setNumbered(true);
        }
        int number = 0;
        for (const cMyFoundPort& port : qAsConst(ports)) {
            Target& target = addTarget();
            target.session.setTrace(trace, number++);
            target.outcome = target.session.open(port);
        }
        return {};
    }

    void tellBeforeTheQuestion()
    {
        // The changes belong to the question, which is asked however quiet the rest is.
        const bool isQuietQuestion = m_invocation.has("quiet") && !m_invocation.has("yes");
        if (isQuietQuestion) {
            m_console.setVolume(cMyConsole::Volume::Normal);
        }
        for (const auto& target : m_targets) {
            tellFailure(*target);
            tellChanges(*target);
        }
        if (isQuietQuestion) {
            m_console.setVolume(cMyConsole::Volume::Quiet);
        }
    }

    /// Once for each target. Of several, each line names the device that it is about.
    void tellFailure(Target& target)
    {
        if (target.isTold || target.outcome.isDone()) {
            return;
        }
        target.isTold = true;
        cMyOutcome shown = target.outcome;
        if (shown.status == ExitStatus::Mismatch) {
            shown.reasons.removeFirst(); // stands above the bytes, before the question
        }
        for (QString& reason : shown.reasons) {
            reason = m_invocation.has("all") ? named(target, reason) : reason;
        }
        m_console.tell(shown);
    }

    [[nodiscard]] static QString named(const Target& target, const QString& reason)
    {
        const bool isNamed = reason.startsWith(target.session.name());
        return isNamed ? reason : QStringLiteral("%1: %2").arg(target.session.name(), reason);
    }

    void tellChanges(const Target& target)
    {
        if (!target.isDue()) {
            return;
        }
        m_console.say(QStringLiteral("%1 would change:").arg(target.writer.deviceName()));
        for (const QString& line : cli::differenceLines(target.writer.changes())) {
            m_console.say(QStringLiteral("  ") + line);
        }
    }

    [[nodiscard]] cMyOutcome confirmed()
    {
        QStringList names;
        QString warnings;
        for (const auto& target : m_targets) {
            if (target->isDue()) {
                names.append(target->writer.deviceName());
                const QString warning = target->writer.warning();
                warnings += warning.isEmpty() ? QString() : warning + QStringLiteral(". ");
            }
        }
        if (names.isEmpty()) {
            return {};
        }
        return cli::confirm(m_invocation, m_console,
                            warnings + QStringLiteral("Write %1 to %2?")
                                           .arg(m_invocation.operands.constFirst(),
                                                names.join(QStringLiteral(", "))));
    }

    [[nodiscard]] static QString verdict(const Target& target)
    {
        if (!target.outcome.isDone()) {
            return QStringLiteral("failed");
        }
        return target.isWritten ? QStringLiteral("written") : QStringLiteral("unchanged");
    }

    [[nodiscard]] static QString verdictLine(const Target& target)
    {
        if (!target.outcome.isDone()) {
            return named(target, target.outcome.reasons.value(0));
        }
        return target.writer.deviceName() +
               (target.isWritten ? QStringLiteral(": written, and read back the same")
                                 : QStringLiteral(": it holds these settings already; nothing was "
                                                  "written"));
    }

    [[nodiscard]] static QJsonObject toJson(const Target& target)
    {
        return {
            {QStringLiteral("port"), target.session.name()},
            {QStringLiteral("serialNumber"), target.writer.serialNumber()},
            {QStringLiteral("result"), verdict(target)},
            {QStringLiteral("status"), static_cast<int>(target.outcome.status)},
            {QStringLiteral("reasons"), QJsonArray::fromStringList(target.outcome.reasons)},
            {QStringLiteral("backup"), target.writer.backup()},
            {QStringLiteral("differences"), cli::differencesJson(target.writer.changes())},
        };
    }

    /// The worst status is the one with the highest number.
    ExitStatus report()
    {
        ExitStatus worst = ExitStatus::Done;
        QJsonArray devices;
        for (const auto& target : m_targets) {
            worst = std::max(worst, target->outcome.status);
            tellFailure(*target);
            devices.append(toJson(*target));
            if (!m_console.isJson() && m_invocation.has("all")) {
                m_console.result(verdictLine(*target));
            } else if (target->outcome.isDone()) {
                m_console.say(verdictLine(*target));
            }
        }
        if (m_console.isJson()) {
            m_console.result(QJsonObject{{QStringLiteral("devices"), devices}});
        }
        return worst;
    }

    const cMyInvocation& m_invocation;
    cMyConsole& m_console;
    cMyMemoryArea m_image;
    std::vector<std::unique_ptr<Target>> m_targets;
};

} // namespace

namespace cli {

ExitStatus runWrite(const cMyInvocation& invocation, cMyConsole& console)
{
    return Writing(invocation, console).run();
}

} // namespace cli
