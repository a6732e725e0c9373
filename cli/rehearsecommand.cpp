// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/backups.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/divelog.h"
#include "cli/diveplot.h"
#include "cli/invocation.h"
#include "cli/picturefile.h"
#include "cli/rehearsal.h"
#include "cli/settingsource.h"
#include "cli/system/interruption.h"
#include "editor/fieldcodec.h"
#include "image/memoryarea.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

using cli::ExitStatus;

constexpr double milliseconds = 1000; ///< in a second
constexpr double centimetres = 100;   ///< in a metre

/// What is rehearsed, in words.
struct Rehearsed
{
    QString source;
    QString title; ///< of the settings; may be empty
    cMyDiveLog log;

    [[nodiscard]] QString settings() const
    {
        return title.isEmpty() ? source : QStringLiteral("%1 (%2)").arg(title, source);
    }
    [[nodiscard]] QString profile() const
    {
        return log.dives == 1
                   ? log.name
                   : QStringLiteral("%1, dive %2 of %3").arg(log.name).arg(log.dive).arg(log.dives);
    }
    [[nodiscard]] QString dive(const cMyRehearsal& rehearsal) const
    {
        return QStringLiteral("%1: %2 min, greatest depth %3 m")
            .arg(profile(), cli::minutesAndSeconds(rehearsal.duration()),
                 QString::number(rehearsal.maximumDepth(), 'f', 2));
    }
};

double timeOf(const cMySpokenMessage& message)
{
    return static_cast<double>(message.time) / milliseconds;
}

/// Which of the dives is asked for, counted from 1; 0 if that is no number of one.
int chosenDive(const cMyInvocation& invocation)
{
    if (!invocation.has("dive")) {
        return 1;
    }
    return std::max(0, invocation.value("dive").toInt());
}

QString lineOf(const cMyRehearsal& rehearsal, int index)
{
    constexpr int timeWidth = 7;
    constexpr int depthWidth = 7;
    constexpr int tenthsPerSecond = 10;
    const cMySpokenMessage& message = rehearsal.messages().at(index);
    const QString time =
        QStringLiteral("%1.%2")
            .arg(cli::minutesAndSeconds(timeOf(message)))
            .arg(message.time * tenthsPerSecond / qint64(milliseconds) % tenthsPerSecond);
    return QStringLiteral("%1 %2 m %3 rule %4: %5")
        .arg(time, timeWidth)
        .arg(QString::number(message.depth / centimetres, 'f', 2), depthWidth)
        .arg(QLatin1String(rehearsal.isHasty(index) ? "+" : " "))
        .arg(message.rule)
        .arg(message.text);
}

QString numbers(const QVector<int>& rules)
{
    QStringList texts;
    for (const int rule : rules) {
        texts.append(QString::number(rule));
    }
    return texts.join(QStringLiteral(", "));
}

void tellBeginning(const Rehearsed& rehearsed, const cMyRehearsal& rehearsal, cMyConsole& console)
{
    const cMyDiveProfile& profile = rehearsed.log.profile;
    console.say(QStringLiteral("Settings: %1").arg(rehearsed.settings()));
    console.say(QStringLiteral("Dive:     %1").arg(rehearsed.dive(rehearsal)));
    if (profile.points().last().depth > 0) {
        constexpr int secondsPerMinute = 60;
        console.say(
            QStringLiteral("The profile ends at %1 m; from there the device is brought up at "
                           "%2 m/min.")
                .arg(QString::number(profile.points().last().depth, 'f', 2))
                .arg(cMyDiveProfile::ascentSpeed * secondsPerMinute));
    }
    if (rehearsal.duration() > profile.duration()) {
        console.say(
            QStringLiteral("The profile ends at %1; the time after that was added, to end with "
                           "a minute at the surface.")
                .arg(cli::minutesAndSeconds(profile.duration())));
    }
    console.say(
        QStringLiteral("Rules as the virtual device reads them, which is no promise of what "
                       "the real one says."));
    console.say({});
}

void tellLeftOut(const cMyRehearsal& rehearsal, cMyConsole& console)
{
    if (rehearsal.leftOut() > 0) {
        console.say(
            QStringLiteral("The first %1 messages are told, and the device goes on talking: "
                           "%2 messages were left out.")
                .arg(rehearsal.messages().size())
                .arg(rehearsal.leftOut()));
    }
}

void tellEnd(const cMyRehearsal& rehearsal, cMyConsole& console)
{
    const int count = static_cast<int>(rehearsal.messages().size());
    int hasty = 0;
    for (int i = 0; i < count; ++i) {
        hasty += rehearsal.isHasty(i) ? 1 : 0;
    }
    console.say({});
    console.say(QStringLiteral("Messages: %1").arg(count + rehearsal.leftOut()));
    tellLeftOut(rehearsal, console);
    if (hasty > 0) {
        console.say(QStringLiteral("Less than %1 s after the one before (+): %2")
                        .arg(cMyRehearsal::timeToSpeak)
                        .arg(hasty));
    }
    if (!rehearsal.silentRules().isEmpty()) {
        console.say(QStringLiteral("On, but not heard on this dive: rule %1")
                        .arg(numbers(rehearsal.silentRules())));
    }
}

QJsonObject json(const Rehearsed& rehearsed, const cMyRehearsal& rehearsal)
{
    QJsonArray messages;
    for (int i = 0; i < rehearsal.messages().size(); ++i) {
        const cMySpokenMessage& message = rehearsal.messages().at(i);
        messages.append(QJsonObject{{QStringLiteral("time"), timeOf(message)},
                                    {QStringLiteral("depth"), message.depth / centimetres},
                                    {QStringLiteral("rule"), message.rule},
                                    {QStringLiteral("text"), message.text},
                                    {QStringLiteral("hasty"), rehearsal.isHasty(i)}});
    }
    QJsonArray silent;
    for (const int rule : rehearsal.silentRules()) {
        silent.append(rule);
    }
    return {{QStringLiteral("source"), rehearsed.source},
            {QStringLiteral("title"), rehearsed.title},
            {QStringLiteral("profile"), rehearsed.log.name},
            {QStringLiteral("dive"), rehearsed.log.dive},
            {QStringLiteral("dives"), rehearsed.log.dives},
            {QStringLiteral("duration"), rehearsal.duration()},
            {QStringLiteral("greatestDepth"), rehearsal.maximumDepth()},
            {QStringLiteral("messages"), messages},
            {QStringLiteral("leftOut"), rehearsal.leftOut()},
            {QStringLiteral("silentRules"), silent}};
}

cMyOutcome cancelled()
{
    return {ExitStatus::Cancelled, {QStringLiteral("cancelled")}};
}

cMyOutcome tellTimeline(const Rehearsed& rehearsed, const cMyRehearsal& rehearsal,
                        cMyConsole& console)
{
    if (console.isJson()) {
        tellLeftOut(rehearsal, console);
        console.result(json(rehearsed, rehearsal));
        return {};
    }
    tellBeginning(rehearsed, rehearsal, console);
    for (int i = 0; i < rehearsal.messages().size(); ++i) {
        if (cli::isInterrupted()) {
            return cancelled();
        }
        console.result(lineOf(rehearsal, i));
    }
    tellEnd(rehearsal, console);
    return {};
}

/// The errors of a dive are about its profile, as the settings have been read.
cMyOutcome named(cMyOutcome outcome, const QString& profile)
{
    for (QString& reason : outcome.reasons) {
        reason.prepend(profile + QStringLiteral(": "));
    }
    return outcome;
}

/// Everything that can be wrong before the dive.
cMyOutcome prepare(const cMyInvocation& invocation, cMyConsole& console, Rehearsed& rehearsed,
                   cMyMemoryArea& settings)
{
    if (!invocation.has("profile")) {
        return {ExitStatus::Usage,
                {QStringLiteral("which dive? --profile takes a file, or one of: %1")
                     .arg(cli::builtInProfiles().join(QStringLiteral(", ")))}};
    }
    const int dive = chosenDive(invocation);
    if (dive == 0) {
        return {ExitStatus::Usage, {QStringLiteral("--dive takes a number from 1 on")}};
    }
    if (invocation.has("plot")) {
        cMyOutcome outcome =
            cMyPictureFile(invocation.value("plot")).check(invocation.has("force"));
        if (!outcome.isDone()) {
            return outcome;
        }
    }
    cMyOutcome outcome = cli::readDiveLog(invocation.value("profile"), dive, rehearsed.log);
    if (!outcome.isDone()) {
        return outcome;
    }
    if (rehearsed.log.dives > 1 && !invocation.has("dive")) {
        console.say(
            QStringLiteral("%1: there are %2 dives; this is the first (--dive N takes another)")
                .arg(rehearsed.log.name)
                .arg(rehearsed.log.dives));
    }
    if (rehearsed.log.strangeTemperatures > 0) {
        console.say(QStringLiteral("%1: %2 temperatures that no water has were left out")
                        .arg(rehearsed.log.name)
                        .arg(rehearsed.log.strangeTemperatures));
    }
    rehearsed.source = invocation.operands.first();
    return cli::loadSource(rehearsed.source, invocation, console, settings);
}

cMyOutcome plot(const cMyInvocation& invocation, const Rehearsed& rehearsed,
                const cMyRehearsal& rehearsal, cMyConsole& console)
{
    const QString path = invocation.value("plot");
    cMyBackups backups(invocation);
    cMyOutcome outcome = cMyPictureFile(path).store(
        cli::drawDive(rehearsal, rehearsed.settings(), rehearsed.dive(rehearsal)), backups);
    if (!backups.path().isEmpty()) {
        console.say(QStringLiteral("The old %1 is kept as %2").arg(path, backups.path()));
    }
    return outcome;
}

} // namespace

namespace cli {

ExitStatus runRehearse(const cMyInvocation& invocation, cMyConsole& console)
{
    Rehearsed rehearsed;
    cMyMemoryArea settings;
    const cMyOutcome ready = prepare(invocation, console, rehearsed, settings);
    if (!ready.isDone()) {
        return console.tell(ready);
    }
    rehearsed.title = editor::storedText(settings, editor::settingsField(QStringLiteral("title")));
    const QString diving = QStringLiteral("Diving");
    const cMyRehearsal rehearsal(settings, rehearsed.log.profile, [&](int second, int seconds) {
        console.progress(diving, second, seconds);
        return !isInterrupted();
    });
    console.progress(diving, 0, 0);
    if (!rehearsal.outcome().isDone()) {
        return console.tell(rehearsal.outcome().status == ExitStatus::Cancelled
                                ? rehearsal.outcome()
                                : named(rehearsal.outcome(), invocation.value("profile")));
    }
    const cMyOutcome told = tellTimeline(rehearsed, rehearsal, console);
    if (!told.isDone() || !invocation.has("plot")) {
        return console.tell(told);
    }
    return console.tell(plot(invocation, rehearsed, rehearsal, console));
}

} // namespace cli
