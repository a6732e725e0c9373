// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/fieldjson.h"
#include "cli/invocation.h"
#include "cli/rule.h"
#include "cli/settingsource.h"
#include "editor/fieldtext.h"
#include "image/memoryarea.h"

#include <algorithm>

namespace {

/// Names and what they stand for; more lines of a text have no name.
class Rows
{
public:
    void add(const QString& name, const QString& text)
    {
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i) {
            m_rows.append({i == 0 ? name : QString(), lines.at(i)});
        }
    }

    void tell(cMyConsole& console) const
    {
        QString::size_type width = 0;
        for (const auto& row : m_rows) {
            width = std::max(width, row.first.size());
        }
        for (const auto& row : m_rows) {
            const QString line = row.first.leftJustified(static_cast<int>(width)) +
                                 QStringLiteral("  ") + row.second;
            console.result(row.second.isEmpty() ? row.first : line);
        }
    }

private:
    QVector<QPair<QString, QString>> m_rows;
};

/// A sentence for each rule, and one for several in a row that are switched off.
void addSentences(Rows& rows, const QVector<cMyRule>& rules)
{
    for (int first = 0; first < rules.size(); ++first) {
        const cMyRule& rule = rules.at(first);
        int last = first;
        while (rule.isOff() && last + 1 < rules.size() && rules.at(last + 1).isOff() &&
               rules.at(last + 1).kind() == rule.kind()) {
            ++last;
        }
        const QString name =
            last == first ? rule.name()
                          : QStringLiteral("%1 to %2").arg(rule.name(), rules.at(last).name());
        rows.add(name, rule.sentence());
        first = last;
    }
}

/// A sentence for each rule, with its members.
void addMembers(Rows& rows, const cMyMemoryArea& image, const QVector<cMyRule>& rules)
{
    for (const cMyRule& rule : rules) {
        rows.add(rule.name(), rule.sentence());
        for (const cMySettingsField& field : editor::settingsFields()) {
            if (field.name.startsWith(rule.name() + QLatin1Char('.'))) {
                rows.add(field.name, editor::valueText(image, field));
            }
        }
    }
}

Rows rowsOf(const cMyMemoryArea& image, bool hasMembers)
{
    const QVector<cMyRule> rules = cli::rules(image);
    Rows rows;
    bool hasRules = false;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!editor::isRuleMember(field)) {
            rows.add(field.name, editor::valueText(image, field));
        } else if (!hasRules) {
            hasRules = true;
            hasMembers ? addMembers(rows, image, rules) : addSentences(rows, rules);
        }
    }
    return rows;
}

QJsonObject jsonOf(const cMyMemoryArea& image)
{
    QJsonObject object;
    for (const cMySettingsField& field : editor::settingsFields()) {
        object.insert(field.name, cli::fieldJson(image, field));
    }
    for (const cMyRule& rule : cli::rules(image)) {
        object.insert(rule.name(), cli::ruleJson(rule));
    }
    return object;
}

} // namespace

namespace cli {

ExitStatus runShow(const cMyInvocation& invocation, cMyConsole& console)
{
    cMyMemoryArea image;
    const cMyOutcome loaded = loadSource(invocation.operands.first(), invocation, console, image);
    if (!loaded.isDone()) {
        return console.tell(loaded);
    }
    if (console.isJson()) {
        console.result(jsonOf(image));
    } else {
        rowsOf(image, invocation.has("verbose")).tell(console);
    }
    return ExitStatus::Done;
}

} // namespace cli
