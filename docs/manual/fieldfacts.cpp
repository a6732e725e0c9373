// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/fieldfacts.h"

#include "editor/fieldcodec.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"

namespace {

/// No screen shows such a number: gravity, which follows from the place.
constexpr int decimalsOffScreen = 2;

bool isNumber(const cMySettingsField& field)
{
    return field.encoding == FieldEncoding::Unsigned || field.encoding == FieldEncoding::Signed;
}

/// Puts into the area what the built-in default settings hold in the field.
void setDefault(cMyMemoryArea& area, const cMySettingsField& field)
{
    QVector<quint8> bytes;
    for (const char byte : field.defaultBytes) {
        bytes.append(static_cast<quint8>(byte));
    }
    area.setData(static_cast<quint32>(field.address), bytes);
}

QString dotted(const QByteArray& bytes)
{
    QStringList parts;
    for (const char byte : bytes) {
        parts += QString::number(static_cast<quint8>(byte));
    }
    return parts.join(QLatin1Char('.'));
}

} // namespace

namespace manual {

QString shownNumber(double number, double factor)
{
    return QString::number(number, 'f',
                           editor::decimalsOfFactor(factor).value_or(decimalsOffScreen));
}

QString range(const cMySettingsField& field)
{
    if (!isNumber(field) || !field.optionTable.isEmpty() || isThreshold(field)) {
        return {};
    }
    return QStringLiteral("%1 to %2")
        .arg(shownNumber(field.minimum, field.factor), shownNumber(field.maximum, field.factor));
}

QString defaultValue(const cMySettingsField& field)
{
    if (field.encoding == FieldEncoding::Bytes) {
        return dotted(field.defaultBytes);
    }
    cMyMemoryArea defaults;
    setDefault(defaults, field);
    if (field.encoding == FieldEncoding::Text) {
        const QString text = editor::storedText(defaults, field);
        return text.isEmpty() ? QStringLiteral("empty") : text;
    }
    const int stored = editor::storedNumber(defaults, field);
    if (field.optionTable.isEmpty()) {
        const QString number = shownNumber(stored / field.factor, field.factor);
        return field.unit.isEmpty() ? number : number + QLatin1Char(' ') + field.unit;
    }
    const cMyTableModel options(editor::optionTableFile(field));
    const int row = options.rowOfValue(stored);
    return row < 0 ? QStringLiteral("none") : options.cell(row, cMyTableModel::Label);
}

QStringList choices(const cMySettingsField& field)
{
    QStringList labels;
    if (!field.optionTable.isEmpty()) {
        const cMyTableModel options(editor::optionTableFile(field));
        for (int row = 0; row < options.rowCount(); ++row) {
            labels += options.cell(row, cMyTableModel::Label);
        }
    }
    return labels;
}

bool isThreshold(const cMySettingsField& field)
{
    return field.name.endsWith(QLatin1String(".threshold"));
}

bool isRuleMember(const cMySettingsField& field)
{
    return field.name.contains(QLatin1Char('.'));
}

QVector<cMySettingsField> ruleMembers(const QString& kind)
{
    const QString first = editor::ruleMember(kind, 1, QString());
    QVector<cMySettingsField> members;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.name.startsWith(first)) {
            members.append(field);
        }
    }
    return members;
}

} // namespace manual
