// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_HELPTEXT_H
#define MIOLKA_CLI_HELPTEXT_H

#include "cli/commandtable.h"

#include <QStringList>

/// The command table in words, for the help and the manual page.
namespace cli {

/// What --help prints, no wider than 80 columns: of one command, or of the program if there is
/// none.
[[nodiscard]] QString helpText(const cMyCommand* command);

/// What is to be typed for an operand, or for an option's value, of that kind.
[[nodiscard]] QString operandText(Completion completion);

/// As it is typed, such as "-f, --force" or "--port NAME".
[[nodiscard]] QString optionText(const cMyOption& option);

/// What the program is, in a sentence.
[[nodiscard]] QString purpose();

/// The text, a phrase, made a sentence.
[[nodiscard]] QString sentence(const char* phrase);

/// The text in lines no longer than that, but for words that are; runs of spaces become one.
[[nodiscard]] QStringList wrapped(const QString& text, int width);

/// The paragraphs of a command's details.
[[nodiscard]] QStringList paragraphs(const cMyCommand& command);

} // namespace cli

#endif
