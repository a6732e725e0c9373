// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldtext.h"

#include "editor/tablemodel.h"
#include "image/memoryarea.h"

#include <cmath>
#include <map>

namespace {

/// No screen shows such a number: gravity, which follows from the place.
constexpr int decimalsOffScreen = 2;
constexpr int mostDecimals = 6;

int screenDecimals(double factor)
{
    return editor::decimalsOfFactor(factor).value_or(decimalsOffScreen);
}

std::map<QString, cMyTableModel> loadTables()
{
    std::map<QString, cMyTableModel> tables;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!field.optionTable.isEmpty()) {
            tables.try_emplace(field.optionTable, editor::optionTableFile(field));
        }
    }
    return tables;
}

/// The member of the rule that the field belongs to.
const cMySettingsField& sibling(const cMySettingsField& field, const char* member)
{
    return editor::settingsField(field.name.section(QLatin1Char('.'), 0, 0) + QLatin1Char('.') +
                                 QLatin1String(member));
}

cMyThresholdScale ownScale(const cMySettingsField& field)
{
    return {field.factor, field.unit, field.minimum, field.maximum};
}

QString numberText(const cMyMemoryArea& image, const cMySettingsField& field)
{
    const cMyThresholdScale scale = editor::numberScale(image, field);
    return editor::withUnit(
        editor::exactNumber(editor::displayedNumber(image, field), scale.factor), scale.unit);
}

QString choiceText(const cMyMemoryArea& image, const cMySettingsField& field)
{
    const cMyTableModel& table = editor::options(field);
    const int stored = editor::storedNumber(image, field);
    const int row = table.rowOfValue(stored);
    return row < 0 ? editor::unknownChoice(stored) : table.cell(row, cMyTableModel::Label);
}

} // namespace

namespace editor {

FieldKind fieldKind(const cMySettingsField& field)
{
    switch (field.encoding) {
    case FieldEncoding::Text:
        return FieldKind::Text;
    case FieldEncoding::Bytes:
        return FieldKind::Version;
    case FieldEncoding::Unsigned:
    case FieldEncoding::Signed:
        break;
    }
    return field.optionTable.isEmpty() ? FieldKind::Number : FieldKind::Choice;
}

const cMyTableModel& options(const cMySettingsField& field)
{
    static const std::map<QString, cMyTableModel> tables = loadTables();
    static const cMyTableModel none;
    const auto found = tables.find(field.optionTable);
    return found == tables.cend() ? none : found->second;
}

bool isThreshold(const cMySettingsField& field)
{
    return field.name.endsWith(QLatin1String(".threshold"));
}

bool isRuleMember(const cMySettingsField& field)
{
    return field.name.contains(QLatin1Char('.'));
}

QVector<cMySettingsField> ruleMembers(const QString& kind, int rule)
{
    const QString prefix = ruleMember(kind, rule, QString());
    QVector<cMySettingsField> members;
    for (const cMySettingsField& field : settingsFields()) {
        if (field.name.startsWith(prefix)) {
            members.append(field);
        }
    }
    return members;
}

cMyThresholdScale numberScale(const cMyMemoryArea& image, const cMySettingsField& field)
{
    if (!isThreshold(field)) {
        return ownScale(field);
    }
    const cMySettingsField& value = sibling(field, "measuredValue");
    const cMyTableModel& values = options(value);
    cMyThresholdScale scale = thresholdScale(values, values.rowOfValue(storedNumber(image, value)));
    scale.unit = plainUnit(scale.unit);
    return scale.minimum == 0 && scale.maximum == 0 ? ownScale(field) : scale;
}

double displayedNumber(const cMyMemoryArea& image, const cMySettingsField& field)
{
    const cMyThresholdScale scale = numberScale(image, field);
    const int stored = storedNumber(image, field);
    return isThreshold(field) ? shownThreshold(stored, scale) : stored / scale.factor;
}

QString shownNumber(double number, double factor)
{
    return QString::number(number, 'f', screenDecimals(factor));
}

QString exactNumber(double number, double factor)
{
    const qint64 stored = std::llround(number * factor);
    int decimals = screenDecimals(factor);
    QString text = shownNumber(number, factor);
    while (std::llround(text.toDouble() * factor) != stored && decimals < mostDecimals) {
        ++decimals;
        text = QString::number(number, 'f', decimals);
    }
    return text;
}

QString withUnit(const QString& number, const QString& unit)
{
    return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
}

QString dottedVersion(const QVector<quint8>& bytes)
{
    QStringList parts;
    for (const quint8 byte : bytes) {
        parts += QString::number(byte);
    }
    return parts.join(QLatin1Char('.'));
}

QString hexadecimal(const QVector<quint8>& bytes)
{
    const QByteArray raw(reinterpret_cast<const char*>(bytes.constData()), bytes.size());
    return QString::fromLatin1(raw.toHex(' ').toUpper());
}

bool isTypable(QChar character)
{
    return character >= QLatin1Char(' ') && character <= QLatin1Char('~');
}

QString unknownChoice(int stored)
{
    return QStringLiteral("unknown (%1)").arg(stored);
}

QString valueText(const cMyMemoryArea& image, const cMySettingsField& field)
{
    switch (fieldKind(field)) {
    case FieldKind::Number:
        return numberText(image, field);
    case FieldKind::Choice:
        return choiceText(image, field);
    case FieldKind::Text:
        return storedText(image, field);
    case FieldKind::Version:
        return dottedVersion(storedBytes(image, field));
    }
    return {};
}

} // namespace editor
