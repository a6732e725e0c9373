// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/layoutfacts.h"

#include "docs/manual/fieldfacts.h"
#include "docs/manual/markdown.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"

namespace {

const QString nothing = QStringLiteral("–");

QString orNothing(const QString& text)
{
    return text.isEmpty() ? nothing : text;
}

} // namespace

namespace manual {

QString hexadecimal(int address)
{
    constexpr int digits = 3;
    constexpr int base = 16;
    return QStringLiteral("0x%1").arg(address, digits, base, QLatin1Char('0'));
}

QString encodingName(const cMySettingsField& field)
{
    switch (field.encoding) {
    case FieldEncoding::Unsigned:
        return QStringLiteral("unsigned");
    case FieldEncoding::Signed:
        return QStringLiteral("signed");
    case FieldEncoding::Text:
        return QStringLiteral("Latin-1");
    case FieldEncoding::Bytes:
        return QStringLiteral("bytes");
    }
    return {};
}

QString factorText(const cMySettingsField& field)
{
    const bool isText = field.encoding == FieldEncoding::Text;
    if (isText || field.encoding == FieldEncoding::Bytes) {
        return nothing;
    }
    return editor::isThreshold(field) ? QStringLiteral("of the value")
                                      : QString::number(field.factor);
}

QString rangeText(const cMySettingsField& field)
{
    if (editor::isThreshold(field)) {
        return QStringLiteral("of the value");
    }
    if (!field.optionTable.isEmpty()) {
        return QStringLiteral("see the codes");
    }
    const QString shown = range(field);
    return orNothing(field.unit.isEmpty() || shown.isEmpty()
                         ? shown
                         : shown + QLatin1Char(' ') + literal(field.unit));
}

QString plainCaption(const cMySettingsField& field)
{
    const QString caption = editor::caption(field);
    const QString number = caption.section(QStringLiteral(". "), 0, 0);
    return number.toInt() > 0 ? caption.mid(number.size() + 2) : caption;
}

RulePlace rulePlace(const QString& kind)
{
    const int first = editor::ruleMembers(kind, 1).constFirst().address;
    return {first, editor::ruleMembers(kind, 2).constFirst().address - first};
}

QString measuredCodes(const QList<QStringList>& options, const QString& caption)
{
    QVector<QStringList> rows;
    for (const QStringList& option : options) {
        const QString unit = editor::plainUnit(option.value(cMyTableModel::Unit));
        const QString range =
            QStringLiteral("%1 to %2")
                .arg(option.value(cMyTableModel::Minimum), option.value(cMyTableModel::Maximum));
        rows.append({option.value(cMyTableModel::Value),
                     literal(option.value(cMyTableModel::Label)),
                     unit.isEmpty() ? nothing : option.value(cMyTableModel::Factor),
                     orNothing(literal(unit)), unit.isEmpty() ? nothing : range});
    }
    return table({{QStringLiteral("Code"), 10},
                  {QStringLiteral("Value"), 35},
                  {QStringLiteral("Factor"), 15},
                  {QStringLiteral("Unit"), 15},
                  {QStringLiteral("Range"), 25}},
                 rows, caption);
}

bool areMeasured(const QList<QStringList>& options)
{
    return !options.isEmpty() && options.constFirst().size() > cMyTableModel::Factor;
}

} // namespace manual
