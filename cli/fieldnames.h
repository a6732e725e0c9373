// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_FIELDNAMES_H
#define MIOLKA_CLI_FIELDNAMES_H

#include "cli/outcome.h"
#include "editor/settingslayout.h"

/// Fields by the names that users type.
namespace cli {

/// Appends the field of that name; of a rule ("messageRule07"), all of its members. Usage if there
/// is neither, with the names that come nearest to it.
[[nodiscard]] cMyOutcome findFields(const QString& name, QVector<cMySettingsField>& fields);

/// Those of the words that are likely to be meant by one that is none of them, the likeliest
/// first; not more than a few.
[[nodiscard]] QStringList nearest(const QString& word, const QStringList& words);

} // namespace cli

#endif
