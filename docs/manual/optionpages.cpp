// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/advice.h"
#include "docs/manual/fieldfacts.h"
#include "docs/manual/markdown.h"
#include "docs/manual/optiontables.h"
#include "docs/manual/pages.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"

namespace {

using manual::Column;
using manual::literal;

const QString measuredValues = QStringLiteral("msgCb2");

constexpr int wide = 68;
constexpr int narrow = 32;

/// Choices that need no more than their names.
QString nameList(const QStringList& labels)
{
    QString list;
    for (const QString& label : labels) {
        list += QStringLiteral("- %1\n").arg(literal(label));
    }
    return labels.isEmpty() ? list : manual::block(QStringLiteral("names"), list);
}

/// The choices of a table: first those that speak for themselves, then the others and what they
/// mean. What a choice means to timer rules alone comes behind what it means to message rules.
QString meanings(const QString& table, const cMyAdvice& advice)
{
    const cMyTableModel options(editor::optionTableFile(table));
    const QString sister = QString(table).replace(0, 3, QStringLiteral("tim"));
    const bool isShared =
        sister != table &&
        cMyTableModel(editor::optionTableFile(sister)).getList() == options.getList();
    QVector<QStringList> rows;
    QStringList selfSpeaking;
    for (int row = 0; row < options.rowCount(); ++row) {
        const QString code = options.cell(row, cMyTableModel::Value);
        QString meaning = advice.meaning(table, code.toInt());
        const QString forTimers = advice.text(manual::adviceKey(sister, code));
        if (isShared && !forTimers.isEmpty() && forTimers != meaning) {
            meaning += QStringLiteral("\n\nIn a timer rule: ") + forTimers;
        }
        const QString label = options.cell(row, cMyTableModel::Label);
        if (meaning.isEmpty()) {
            selfSpeaking += label;
        } else {
            rows.append({literal(label), meaning});
        }
    }
    const QVector<Column> columns = {{QStringLiteral("Choice"), narrow},
                                     {QStringLiteral("Meaning"), wide}};
    return nameList(selfSpeaking) + (rows.isEmpty() ? QString() : manual::table(columns, rows));
}

QString values(const cMyAdvice& advice)
{
    const QVector<Column> columns = {{QStringLiteral("Value"), 29},
                                     {QStringLiteral("Unit"), 8},
                                     {QStringLiteral("Range"), 19},
                                     {QStringLiteral("Meaning"), 44}};
    const cMyTableModel options(editor::optionTableFile(measuredValues));
    QVector<QStringList> rows;
    for (int row = 0; row < options.rowCount(); ++row) {
        const QString code = options.cell(row, cMyTableModel::Value);
        const cMyThresholdScale scale = editor::thresholdScale(options, row);
        const bool isCompared = !scale.unit.isEmpty();
        const QString range = QStringLiteral("%1 to %2")
                                  .arg(editor::shownNumber(scale.minimum, scale.factor),
                                       editor::shownNumber(scale.maximum, scale.factor));
        rows.append({literal(options.cell(row, cMyTableModel::Label)),
                     literal(editor::plainUnit(scale.unit)), isCompared ? range : QString(),
                     advice.meaning(measuredValues, code.toInt())});
    }
    return manual::table(columns, rows);
}

} // namespace

namespace manual {

Pages optionPages(const cMyAdvice& advice)
{
    return {
        {QStringLiteral("values.md"), values(advice)},
        {QStringLiteral("conditions.md"), meanings(QStringLiteral("msgCb1"), advice)},
        {QStringLiteral("comparisons.md"), meanings(QStringLiteral("msgCb3"), advice)},
        {QStringLiteral("messages.md"), meanings(QStringLiteral("msgCb4"), advice)},
        {QStringLiteral("forms.md"), meanings(QStringLiteral("msgCb5"), advice)},
        {QStringLiteral("repetitions.md"), meanings(QStringLiteral("msgCb6"), advice)},
        {QStringLiteral("actions.md"), meanings(QStringLiteral("timCb4"), advice)},
    };
}

} // namespace manual
