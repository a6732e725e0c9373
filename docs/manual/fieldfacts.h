// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_FIELDFACTS_H
#define MIOLKA_DOCS_MANUAL_FIELDFACTS_H

#include "editor/settingslayout.h"

/// What the table of fields says of one, as the user reads it on the screen.
namespace manual {

/// "5 to 255"; empty for choices, texts and the threshold of a rule.
[[nodiscard]] QString range(const cMySettingsField& field);

/// What the built-in default settings hold: a number with its unit, the label of a choice, a text.
/// "none" for a choice that is not offered, "empty" for an empty text.
[[nodiscard]] QString defaultValue(const cMySettingsField& field);

/// The labels of a field's choices in their order; empty if it offers none.
[[nodiscard]] QStringList choices(const cMySettingsField& field);

} // namespace manual

#endif
