// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/optiontables.h"

#include "editor/settingslayout.h"

namespace manual {

QStringList optionTables()
{
    QStringList tables;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!field.optionTable.isEmpty()) {
            tables += field.optionTable;
        }
    }
    tables.removeDuplicates();
    return tables;
}

} // namespace manual
