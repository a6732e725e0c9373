// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_FIELDINPUT_H
#define MIOLKA_CLI_FIELDINPUT_H

#include "cli/outcome.h"
#include "editor/settingslayout.h"

class cMyMemoryArea;

/// Values of fields as users type them. Numbers are in the unit of their field, which may be left
/// out; choices go by their label in small or capital letters, those of "4 [s]" and the like also
/// by the label's number, and any by "#" and the number that is stored; texts are taken as they
/// are, but in a text of several lines "\n" is a line break and "\\" a backslash.
namespace cli {

/// What parseValue() makes the same bytes of, as long as a number in the field is one that the
/// field takes. A choice that nobody offers is "#" and what is stored. One line.
[[nodiscard]] QString inputText(const cMyMemoryArea& image, const cMySettingsField& field);

/// The bytes for the beginning of the field; the rest of it stays as it is. A threshold goes by
/// the measured value that the image holds beside it. Usage, with the field's name and what it
/// takes, if it does not take that.
[[nodiscard]] cMyOutcome parseValue(const QString& text, const cMySettingsField& field,
                                    const cMyMemoryArea& image, QVector<quint8>& bytes);

} // namespace cli

#endif
