// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/differencesjson.h"
#include "cli/invocation.h"
#include "cli/rule.h"
#include "cli/settingsource.h"
#include "image/memoryarea.h"

#include <QJsonObject>

namespace {

/// A rule that the images do not share, in both of them.
struct RulePair
{
    QString name;
    QString before;
    QString after;
};

QVector<RulePair> otherRules(const cMyMemoryArea& before, const cMyMemoryArea& after)
{
    const QVector<cMyRule> rulesBefore = cli::rules(before);
    const QVector<cMyRule> rulesAfter = cli::rules(after);
    QVector<RulePair> pairs;
    for (int i = 0; i < rulesBefore.size(); ++i) {
        const QString one = rulesBefore.at(i).sentence();
        const QString other = rulesAfter.at(i).sentence();
        if (one != other) {
            pairs.append({rulesBefore.at(i).name(), one, other});
        }
    }
    return pairs;
}

QJsonObject jsonOf(const QVector<cMySettingsDifference>& differences,
                   const QVector<RulePair>& pairs)
{
    QJsonObject rules;
    for (const RulePair& pair : pairs) {
        rules.insert(pair.name, QJsonObject{{QStringLiteral("before"), pair.before},
                                            {QStringLiteral("after"), pair.after}});
    }
    return {{QStringLiteral("isDifferent"), cli::isDifferent(differences)},
            {QStringLiteral("differences"), cli::differencesJson(differences)},
            {QStringLiteral("rules"), rules}};
}

/// Fields as they differ, and in front of a rule's members what the whole rule says.
void tell(const QVector<cMySettingsDifference>& differences, const QVector<RulePair>& pairs,
          cMyConsole& console)
{
    QString told;
    for (const cMySettingsDifference& each : differences) {
        const QString rule = each.name.section(QLatin1Char('.'), 0, 0);
        for (const RulePair& pair : pairs) {
            if (pair.name == rule && told != rule) {
                told = rule;
                console.result(QStringLiteral("%1: %2 -> %3").arg(rule, pair.before, pair.after));
            }
        }
        for (const QString& line : cli::differenceLines({each})) {
            console.result(line);
        }
    }
    if (!cli::isDifferent(differences)) {
        console.say(QStringLiteral("the settings are the same"));
    }
}

} // namespace

namespace cli {

ExitStatus runDiff(const cMyInvocation& invocation, cMyConsole& console)
{
    cMyMemoryArea before;
    cMyMemoryArea after;
    const cMyOutcome first = loadSource(invocation.operands.at(0), invocation, console, before);
    if (!first.isDone()) {
        return console.tell(first);
    }
    const cMyOutcome second = loadSource(invocation.operands.at(1), invocation, console, after);
    if (!second.isDone()) {
        return console.tell(second);
    }
    const QVector<cMySettingsDifference> found = differences(before, after);
    const QVector<RulePair> pairs = otherRules(before, after);
    if (console.isJson()) {
        console.result(jsonOf(found, pairs));
    } else {
        tell(found, pairs, console);
    }
    return isDifferent(found) ? ExitStatus::Differs : ExitStatus::Done;
}

} // namespace cli
