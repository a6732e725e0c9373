// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/advice.h"

#include "docs/manual/optiontables.h"
#include "editor/settingslayout.h"
#include "editor/tablemodel.h"

#include <QRegularExpression>
#include <QSet>

namespace {

/// The tables whose every choice needs a text: what a rule consists of is told by its choices.
/// Comparisons and messages may speak for themselves.
bool needsMeanings(const QString& table)
{
    const QStringList free = {QStringLiteral("Cb3"), QStringLiteral("msgCb4")};
    return !table.startsWith(QLatin1String("par")) &&
           std::none_of(free.cbegin(), free.cend(),
                        [&table](const QString& each) { return table.endsWith(each); });
}

QSet<QString> knownKeys()
{
    QSet<QString> keys;
    for (const cMySettingsField& field : editor::settingsFields()) {
        keys.insert(manual::adviceKey(field));
    }
    for (const QString& table : manual::optionTables()) {
        const cMyTableModel options(editor::optionTableFile(table));
        for (int row = 0; row < options.rowCount(); ++row) {
            keys.insert(manual::adviceKey(table, options.cell(row, cMyTableModel::Value)));
        }
    }
    return keys;
}

} // namespace

namespace manual {

QString adviceKey(const cMySettingsField& field)
{
    static const QRegularExpression ruleNumber(QStringLiteral("\\d+(?=\\.)"));
    return QString(field.name).remove(ruleNumber);
}

QString adviceKey(const QString& table, const QString& code)
{
    return table + QLatin1Char('/') + code;
}

} // namespace manual

cMyAdvice::cMyAdvice(const QString& source)
{
    static const QRegularExpression keyLine(QStringLiteral("^\\[([A-Za-z0-9./]+)\\]\\s*$"));
    QString key;
    const QStringList lines = source.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = keyLine.match(line);
        if (match.hasMatch()) {
            key = match.captured(1);
            m_keys.append(key);
        } else if (!key.isEmpty()) {
            m_texts[key] += line + QLatin1Char('\n');
        } else if (!line.trimmed().isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            m_keys.append(line); // as good as a key that nobody knows
        }
    }
    for (QString& text : m_texts) {
        text = text.trimmed();
    }
}

QString cMyAdvice::meaning(const QString& table, int code) const
{
    QString own = text(manual::adviceKey(table, QString::number(code)));
    if (!own.isEmpty() || !table.startsWith(QLatin1String("tim"))) {
        return own;
    }
    const QString sister = QString(table).replace(0, 3, QStringLiteral("msg"));
    const cMyTableModel options(editor::optionTableFile(table));
    const cMyTableModel sisters(editor::optionTableFile(sister));
    const QString label = options.cell(options.rowOfValue(code), cMyTableModel::Label);
    for (int row = 0; row < sisters.rowCount(); ++row) {
        if (sisters.cell(row, cMyTableModel::Label) == label) {
            return text(manual::adviceKey(sister, sisters.cell(row, cMyTableModel::Value)));
        }
    }
    return {};
}

QStringList cMyAdvice::faults() const
{
    QStringList faults;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (text(manual::adviceKey(field)).isEmpty()) {
            faults += QStringLiteral("no advice for the field ") + manual::adviceKey(field);
        }
    }
    for (const QString& table : manual::optionTables()) {
        const cMyTableModel options(editor::optionTableFile(table));
        for (int row = 0; needsMeanings(table) && row < options.rowCount(); ++row) {
            const QString code = options.cell(row, cMyTableModel::Value);
            if (meaning(table, code.toInt()).isEmpty()) {
                faults += QStringLiteral("no meaning of the choice %1 (%2)")
                              .arg(manual::adviceKey(table, code),
                                   options.cell(row, cMyTableModel::Label));
            }
        }
    }
    const QSet<QString> known = knownKeys();
    QSet<QString> seen;
    for (const QString& key : m_keys) {
        if (!known.contains(key)) {
            faults += QStringLiteral("unknown key \"%1\"").arg(key);
        } else if (seen.contains(key)) {
            faults += QStringLiteral("key \"%1\" comes twice").arg(key);
        }
        seen.insert(key);
    }
    faults.removeDuplicates();
    return faults;
}
