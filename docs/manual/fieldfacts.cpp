// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/fieldfacts.h"

#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"

namespace {

/// Puts into the area what the built-in default settings hold in the field.
void setDefault(cMyMemoryArea& area, const cMySettingsField& field)
{
    QVector<quint8> bytes;
    for (const char byte : field.defaultBytes) {
        bytes.append(static_cast<quint8>(byte));
    }
    area.setData(static_cast<quint32>(field.address), bytes);
}

} // namespace

namespace manual {

QString range(const cMySettingsField& field)
{
    if (editor::fieldKind(field) != editor::FieldKind::Number || editor::isThreshold(field)) {
        return {};
    }
    return QStringLiteral("%1 to %2")
        .arg(editor::shownNumber(field.minimum, field.factor),
             editor::shownNumber(field.maximum, field.factor));
}

QString defaultValue(const cMySettingsField& field)
{
    cMyMemoryArea defaults;
    setDefault(defaults, field);
    const int stored = editor::storedNumber(defaults, field);
    switch (editor::fieldKind(field)) {
    case editor::FieldKind::Number:
        return editor::withUnit(editor::shownNumber(stored / field.factor, field.factor),
                                field.unit);
    case editor::FieldKind::Choice:
        if (editor::options(field).rowOfValue(stored) < 0) {
            return QStringLiteral("none");
        }
        break;
    case editor::FieldKind::Text:
    case editor::FieldKind::Version:
        break;
    }
    const QString text = editor::valueText(defaults, field);
    return text.isEmpty() ? QStringLiteral("empty") : text;
}

QStringList choices(const cMySettingsField& field)
{
    QStringList labels;
    const cMyTableModel& options = editor::options(field);
    for (int row = 0; row < options.rowCount(); ++row) {
        labels += options.cell(row, cMyTableModel::Label);
    }
    return labels;
}

} // namespace manual
