// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/advice.h"
#include "docs/manual/fieldfacts.h"
#include "docs/manual/layoutfacts.h"
#include "docs/manual/markdown.h"
#include "docs/manual/optiontables.h"
#include "docs/manual/pages.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"

#include <algorithm>

namespace {

using manual::Column;
using manual::literal;

const QString compact = QStringLiteral("compact"); ///< the class of long tables

/// What is said of fields that stand by themselves and of a rule's members alike.
QStringList commonCells(const cMySettingsField& field)
{
    return {QString::number(field.width), literal(manual::plainCaption(field)),
            manual::encodingName(field),  manual::factorText(field),
            manual::rangeText(field),     literal(manual::defaultValue(field))};
}

QVector<Column> columns(const char* place, int share)
{
    return {{QString::fromLatin1(place), share}, {QStringLiteral("Bytes"), 7},
            {QStringLiteral("Field"), 31},       {QStringLiteral("Encoding"), 10},
            {QStringLiteral("Factor"), 10},      {QStringLiteral("Range"), 20},
            {QStringLiteral("Default"), 14}};
}

QString fieldTable()
{
    constexpr int share = 14;
    QVector<QStringList> rows;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!editor::isRuleMember(field)) {
            const QString place = QStringLiteral("%1 (%2)")
                                      .arg(field.address)
                                      .arg(manual::hexadecimal(field.address));
            rows.append(QStringList(place) + commonCells(field));
        }
    }
    return manual::table(columns("Address", share), rows, QStringLiteral("Fields"));
}

QString ruleTable(const char* kind, const char* name, int count)
{
    constexpr int share = 9;
    const QString fieldKind = QString::fromLatin1(kind);
    const QVector<cMySettingsField> members = editor::ruleMembers(fieldKind, 1);
    const manual::RulePlace rules = manual::rulePlace(fieldKind);
    QVector<QStringList> rows;
    for (const cMySettingsField& field : members) {
        rows.append(QStringList(QString::number(field.address - rules.address)) +
                    commonCells(field));
    }
    const QString place =
        QStringLiteral("%1 rule *n* of %2, with *n* from 1 to %2, begins at address "
                       "%3 + %4 × (*n* − 1). Its members, from there:\n\n")
            .arg(QString::fromLatin1(name))
            .arg(count)
            .arg(rules.address)
            .arg(rules.size);
    return place + manual::table(columns("Offset", share), rows,
                                 QStringLiteral("%1 rules").arg(QString::fromLatin1(name)));
}

/// The fields that no page of the editor has.
QString notEdited(const cMyAdvice& advice)
{
    QString text;
    for (const char* name : {"programVersion", "gravity"}) {
        const cMySettingsField& field = editor::settingsField(QString::fromLatin1(name));
        text += QStringLiteral("**%1.** %2\n\n")
                    .arg(literal(editor::caption(field)), advice.text(field.name));
    }
    return text;
}

/// "2. Depth sampling rate", or "When (timer rules, message rules)".
QString users(const QList<QStringList>& options)
{
    QString caption;
    QStringList kinds;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.optionTable.isEmpty() ||
            cMyTableModel(editor::optionTableFile(field)).getList() != options) {
            continue;
        }
        caption = manual::plainCaption(field);
        if (editor::isRuleMember(field)) {
            kinds += field.name.startsWith(QLatin1String("timer"))
                         ? QStringLiteral("timer rules")
                         : QStringLiteral("message rules");
        }
    }
    kinds.removeDuplicates();
    return kinds.isEmpty()
               ? caption
               : QStringLiteral("%1 (%2)").arg(caption, kinds.join(QStringLiteral(", ")));
}

/// Codes and labels side by side, as they would leave most of the page empty otherwise.
QString plainCodes(const QList<QStringList>& options)
{
    constexpr int mostGroups = 3;
    const int count = static_cast<int>(options.size());
    const int groups = std::min(mostGroups, count);
    const int length = (count + groups - 1) / groups;
    QVector<Column> columns;
    QVector<QStringList> rows(length);
    for (int group = 0; group < groups; ++group) {
        constexpr int codeShare = 8;
        columns += {{QStringLiteral("Code"), codeShare},
                    {QStringLiteral("Choice"), 100 / groups - codeShare}};
        for (int row = 0; row < length; ++row) {
            const QStringList option = options.value(group * length + row);
            rows[row] += option.value(cMyTableModel::Value);
            rows[row] += literal(option.value(cMyTableModel::Label));
        }
    }
    return manual::table(columns, rows, users(options));
}

/// Every table once, where timer rules and message rules have the same.
QString codes()
{
    QString text;
    QList<QList<QStringList>> done;
    for (const QString& table : manual::optionTables()) {
        const QList<QStringList> options = cMyTableModel(editor::optionTableFile(table)).getList();
        if (!done.contains(options)) {
            text += manual::areMeasured(options) ? manual::measuredCodes(options, users(options))
                                                 : plainCodes(options);
            done.append(options);
        }
    }
    return text;
}

} // namespace

namespace manual {

Pages layoutPages(const cMyAdvice& advice)
{
    return {{QStringLiteral("layout.md"),
             block(compact, fieldTable()) + notEdited(advice) +
                 block(compact, ruleTable("timerRule", "Timer", editor::timerRuleCount) +
                                    ruleTable("messageRule", "Message", editor::messageRuleCount))},
            {QStringLiteral("option-codes.md"), block(compact, codes())}};
}

Pages allPages(const cMyAdvice& advice)
{
    Pages pages = fieldPages(advice);
    for (const Pages& more : {optionPages(advice), layoutPages(advice)}) {
        for (auto page = more.cbegin(); page != more.cend(); ++page) {
            pages.insert(page.key(), page.value());
        }
    }
    return pages;
}

} // namespace manual
