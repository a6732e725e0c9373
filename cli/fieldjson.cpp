// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/fieldjson.h"

#include "cli/rule.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"

namespace {

QJsonValue valueJson(const cMyMemoryArea& image, const cMySettingsField& field)
{
    switch (editor::fieldKind(field)) {
    case editor::FieldKind::Number: {
        // The number that is shown, not one with all the digits of a fraction that is not stored.
        const double factor = editor::numberScale(image, field).factor;
        return editor::exactNumber(editor::displayedNumber(image, field), factor).toDouble();
    }
    case editor::FieldKind::Choice:
        return editor::storedNumber(image, field);
    case editor::FieldKind::Text:
    case editor::FieldKind::Version:
        break;
    }
    return editor::valueText(image, field);
}

QJsonValue orNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

} // namespace

namespace cli {

QJsonObject fieldJson(const cMyMemoryArea& image, const cMySettingsField& field)
{
    const bool isNumber = editor::fieldKind(field) == editor::FieldKind::Number;
    const cMyTableModel& options = editor::options(field);
    const QString label =
        options.cell(options.rowOfValue(editor::storedNumber(image, field)), cMyTableModel::Label);
    return {{QStringLiteral("bytes"), editor::hexadecimal(editor::storedBytes(image, field))},
            {QStringLiteral("value"), valueJson(image, field)},
            {QStringLiteral("unit"),
             isNumber ? orNull(editor::numberScale(image, field).unit) : QJsonValue()},
            {QStringLiteral("label"), orNull(label)}};
}

QJsonObject ruleJson(const cMyRule& rule)
{
    return {{QStringLiteral("isOff"), rule.isOff()}, {QStringLiteral("sentence"), rule.sentence()}};
}

} // namespace cli
