// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/differencesjson.h"
#include "cli/fieldinput.h"
#include "cli/fieldnames.h"
#include "cli/invocation.h"
#include "cli/outputfile.h"
#include "cli/rule.h"
#include "cli/settingscheck.h"
#include "cli/settingsource.h"
#include "editor/fieldtext.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QJsonObject>

#include <algorithm>

namespace {

struct Assignment
{
    cMySettingsField field;
    QString value;
};

/// What goes wrong adds up, so that a user learns of all of it at once.
void add(cMyOutcome& all, const cMyOutcome& one)
{
    if (!one.isDone()) {
        all.status = one.status;
        all.reasons += one.reasons;
    }
}

cMyOutcome usage(const QString& reason)
{
    return {cli::ExitStatus::Usage, {reason}};
}

bool isAssigned(const QVector<Assignment>& assignments, const QString& name)
{
    return std::any_of(assignments.cbegin(), assignments.cend(),
                       [&name](const Assignment& each) { return each.field.name == name; });
}

cMyOutcome parseAssignment(const QString& operand, QVector<Assignment>& assignments)
{
    const auto sign = operand.indexOf(QLatin1Char('='));
    if (sign < 0) {
        return usage(QStringLiteral("\"%1\" is no FIELD=VALUE").arg(operand));
    }
    const QString name = operand.left(sign);
    QVector<cMySettingsField> fields;
    cMyOutcome found = cli::findFields(name, fields);
    if (!found.isDone()) {
        return found;
    }
    if (fields.first().name != name) {
        return usage(QStringLiteral("%1 is a whole rule; set its members, such as %2")
                         .arg(name, fields.first().name));
    }
    if (isAssigned(assignments, name)) {
        return usage(QStringLiteral("%1 is given two values").arg(name));
    }
    assignments.append({fields.first(), operand.mid(sign + 1)});
    return {};
}

cMyOutcome parseAll(const QStringList& operands, QVector<Assignment>& assignments)
{
    cMyOutcome all;
    for (const QString& operand : operands) {
        add(all, parseAssignment(operand, assignments));
    }
    // Thresholds last: they go by the measured values that their rules have then.
    std::stable_partition(assignments.begin(), assignments.end(),
                          [](const Assignment& each) { return !editor::isThreshold(each.field); });
    return all;
}

cMyOutcome apply(const QVector<Assignment>& assignments, cMyMemoryArea& image)
{
    cMyOutcome all;
    for (const Assignment& each : assignments) {
        QVector<quint8> bytes;
        const cMyOutcome parsed = cli::parseValue(each.value, each.field, image, bytes);
        if (parsed.isDone()) {
            image.setData(static_cast<quint32>(each.field.address), bytes);
        }
        add(all, parsed);
    }
    return all;
}

/// Gravity follows the place in the window; here only what is named is set.
void tellOfGravity(const QVector<Assignment>& assignments, const cMyMemoryArea& image,
                   const QString& file, cMyConsole& console)
{
    const QString altitude = QStringLiteral("altitude");
    const QString latitude = QStringLiteral("latitude");
    const cMySettingsField& gravity = editor::settingsField(QStringLiteral("gravity"));
    const int follows = cli::gravityOfPlace(image);
    const bool isPlace = isAssigned(assignments, altitude) || isAssigned(assignments, latitude);
    if (!isPlace || isAssigned(assignments, gravity.name) ||
        follows == editor::storedNumber(image, gravity)) {
        return;
    }
    const QString number = editor::exactNumber(follows / gravity.factor, gravity.factor);
    console.say(QStringLiteral("gravity stays %1, but is %2 at this place; to change it: "
                               "miolkactl set %3 gravity=%4")
                    .arg(editor::valueText(image, gravity), editor::withUnit(number, gravity.unit),
                         file, number));
}

/// A threshold keeps its bytes when the value that it is compared with becomes another.
void tellOfThresholds(const QVector<Assignment>& assignments, const cMyMemoryArea& before,
                      const cMyMemoryArea& after, cMyConsole& console)
{
    for (const cMyRule& rule : cli::rules(after)) {
        const cMySettingsField& threshold = rule.field("threshold");
        const QString text = editor::valueText(after, threshold);
        if (!isAssigned(assignments, threshold.name) &&
            text != editor::valueText(before, threshold)) {
            console.say(QStringLiteral("%1 was not given: what was %2 means %3 now")
                            .arg(threshold.name, editor::valueText(before, threshold), text));
        }
    }
}

void tellChanges(const QString& file, const QVector<cMySettingsDifference>& changes,
                 cMyConsole& console)
{
    if (console.isJson()) {
        console.result(QJsonObject{{QStringLiteral("changes"), cli::differencesJson(changes)}});
        return;
    }
    for (const QString& line : cli::differenceLines(changes)) {
        console.result(line);
    }
    if (changes.isEmpty()) {
        console.say(QStringLiteral("%1: holds that already, nothing was written").arg(file));
    }
}

} // namespace

namespace cli {

ExitStatus runSet(const cMyInvocation& invocation, cMyConsole& console)
{
    const QString file = invocation.operands.first();
    QVector<Assignment> assignments;
    const cMyOutcome parsed = parseAll(invocation.operands.mid(1), assignments);
    if (!parsed.isDone()) {
        return console.tell(parsed);
    }
    cMyMemoryArea before;
    const cMyOutcome loaded = loadSettings(file, before);
    if (!loaded.isDone()) {
        return console.tell(loaded);
    }
    cMyMemoryArea after;
    after.setData(0, before.data(0, image::settingsImageSize));
    const cMyOutcome applied = apply(assignments, after);
    if (!applied.isDone()) {
        return console.tell(applied);
    }
    const QVector<cMySettingsDifference> changes = differences(before, after);
    const cMyOutcome written =
        changes.isEmpty() ? cMyOutcome() : replaceImageFile(file, after, invocation, console);
    if (!written.isDone()) {
        return console.tell(written);
    }
    tellChanges(file, changes, console);
    tellOfThresholds(assignments, before, after, console);
    tellOfGravity(assignments, after, file, console);
    return ExitStatus::Done;
}

} // namespace cli
