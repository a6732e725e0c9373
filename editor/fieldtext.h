// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_FIELDTEXT_H
#define MIOLKA_EDITOR_FIELDTEXT_H

#include "editor/fieldcodec.h"

/// Fields as a person reads them: numbers with a decimal point and their unit, choices by their
/// labels. For any thread.
namespace editor {

/// How a field is shown: a number with its unit, the label of a choice, a text, bytes with dots.
enum class FieldKind { Number, Choice, Text, Version };

/// Which kind its encoding and option table make it.
[[nodiscard]] FieldKind fieldKind(const cMySettingsField& field);

/// The table of the values that are offered for the field; empty if there is none. Loaded once.
[[nodiscard]] const cMyTableModel& options(const cMySettingsField& field);

/// The threshold of a rule, whose range and unit are those of the measured value beside it.
[[nodiscard]] bool isThreshold(const cMySettingsField& field);

/// A member of a rule.
[[nodiscard]] bool isRuleMember(const cMySettingsField& field);

/// The members of a rule: kind is "timerRule" or "messageRule", rules count from 1.
[[nodiscard]] QVector<cMySettingsField> ruleMembers(const QString& kind, int rule);

/// Factor, unit (without brackets) and range of a number. Those of a threshold are the ones of the
/// measured value that its rule compares in this image; where that compares nothing or means
/// nothing, stored units.
[[nodiscard]] cMyThresholdScale numberScale(const cMyMemoryArea& image,
                                            const cMySettingsField& field);

/// The number in the field as it is displayed, in the unit of its scale.
[[nodiscard]] double displayedNumber(const cMyMemoryArea& image, const cMySettingsField& field);

/// A number as the screen shows one that is stored times this factor.
[[nodiscard]] QString shownNumber(double number, double factor);

/// The same with as many more decimals as it takes to tell the stored number from its neighbours.
[[nodiscard]] QString exactNumber(double number, double factor);

/// "5 cm"; the number alone if the unit is empty.
[[nodiscard]] QString withUnit(const QString& number, const QString& unit);

/// Bytes as a version: "1.0.4.0".
[[nodiscard]] QString dottedVersion(const QVector<quint8>& bytes);

/// Bytes as "0A FF".
[[nodiscard]] QString hexadecimal(const QVector<quint8>& bytes);

/// From space to tilde: what the device's texts are made of.
[[nodiscard]] bool isTypable(QChar character);

/// "unknown (37)", for a stored number that no choice has.
[[nodiscard]] QString unknownChoice(int stored);

/// What the field holds: "1.00 m", the label of a choice, a text as it is, a version. A number is
/// exact, so that two texts are equal only if the numbers are.
[[nodiscard]] QString valueText(const cMyMemoryArea& image, const cMySettingsField& field);

} // namespace editor

#endif
