// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_FIELDFACTS_H
#define MIOLKA_DOCS_MANUAL_FIELDFACTS_H

#include "editor/settingslayout.h"

/// What the table of fields says of one, as the user reads it on the screen.
namespace manual {

/// A number as the screen shows one that is stored times this factor.
[[nodiscard]] QString shownNumber(double number, double factor);

/// "5 to 255"; empty for choices, texts and the threshold of a rule.
[[nodiscard]] QString range(const cMySettingsField& field);

/// What the built-in default settings hold: a number with its unit, the label of a choice, a text.
/// "none" for a choice that is not offered, "empty" for an empty text.
[[nodiscard]] QString defaultValue(const cMySettingsField& field);

/// The labels of a field's choices in their order; empty if it offers none.
[[nodiscard]] QStringList choices(const cMySettingsField& field);

/// The threshold of a rule, whose range and unit are those of the measured value beside it.
[[nodiscard]] bool isThreshold(const cMySettingsField& field);

/// A member of a rule.
[[nodiscard]] bool isRuleMember(const cMySettingsField& field);

/// The members of a kind of rule, "timerRule" or "messageRule", taken from its first rule.
[[nodiscard]] QVector<cMySettingsField> ruleMembers(const QString& kind);

} // namespace manual

#endif
