// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_LAYOUTFACTS_H
#define MIOLKA_DOCS_MANUAL_LAYOUTFACTS_H

#include "editor/settingslayout.h"

/// What the table of fields says of how they are stored, in words for those who write programs.
namespace manual {

/// Three digits, as in "0x0FF".
[[nodiscard]] QString hexadecimal(int address);

/// "unsigned", "signed", "Latin-1" or "bytes".
[[nodiscard]] QString encodingName(const cMySettingsField& field);

/// Stored units for each displayed unit; what else there is to say, where it is no number.
[[nodiscard]] QString factorText(const cMySettingsField& field);

/// With the unit; what else there is to say of choices, thresholds and texts. Markdown.
[[nodiscard]] QString rangeText(const cMySettingsField& field);

/// A caption of the screen without the number that the device's parameters have there.
[[nodiscard]] QString plainCaption(const cMySettingsField& field);

/// Where the rules of a kind lie: kind is "timerRule" or "messageRule".
struct RulePlace
{
    int address = 0; ///< of the first byte of the first rule
    int size = 0;    ///< bytes from one rule to the next
};
[[nodiscard]] RulePlace rulePlace(const QString& kind);

/// The choices of measured values with the factor, unit and range that each gives its threshold.
/// Rows are those of cMyTableModel; the caption may be empty. Markdown.
[[nodiscard]] QString measuredCodes(const QList<QStringList>& options, const QString& caption);

/// Whether the rows are those of measured values.
[[nodiscard]] bool areMeasured(const QList<QStringList>& options);

} // namespace manual

#endif
