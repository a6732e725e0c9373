// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_DOCS_COMPLETEADVICE_H
#define MIOLKA_TESTS_DOCS_COMPLETEADVICE_H

#include "docs/manual/advice.h"
#include "docs/manual/optiontables.h"
#include "editor/settingslayout.h"
#include "editor/tablemodel.h"

#include <QMap>

namespace support {

/// Keys of advice with their texts.
using Texts = QMap<QString, QString>;

inline QString textOf(const QString& key)
{
    return QStringLiteral("Text of %1.").arg(key);
}

/// A text for each field and for each choice of message rules and actions. Conditions and measured
/// values of timer rules have those of message rules.
inline Texts completeTexts()
{
    Texts texts;
    for (const cMySettingsField& field : editor::settingsFields()) {
        texts.insert(manual::adviceKey(field), textOf(manual::adviceKey(field)));
    }
    for (const char* table : {"msgCb1", "msgCb2", "msgCb5", "msgCb6", "timCb4"}) {
        const QString name = QString::fromLatin1(table);
        const cMyTableModel options(editor::optionTableFile(name));
        for (int row = 0; row < options.rowCount(); ++row) {
            const QString key = manual::adviceKey(name, options.cell(row, cMyTableModel::Value));
            texts.insert(key, textOf(key));
        }
    }
    return texts;
}

/// As they stand in the file of advice.
inline QString sourceOf(const Texts& texts)
{
    QString source = QStringLiteral("# A comment.\n\n");
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        source += QStringLiteral("[%1]\n%2\n\n").arg(text.key(), text.value());
    }
    return source;
}

} // namespace support

#endif
