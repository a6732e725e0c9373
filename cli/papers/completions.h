// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PAPERS_COMPLETIONS_H
#define MIOLKA_CLI_PAPERS_COMPLETIONS_H

#include "cli/commandtable.h"

#include <QStringList>

/// Scripts that let shells complete the command lines of a program with these commands.
namespace papers {

/// One script for each shell, UTF-8, to be installed where the shell looks for such files.
[[nodiscard]] QString bashCompletion(const QVector<cMyCommand>& commands);
[[nodiscard]] QString zshCompletion(const QVector<cMyCommand>& commands);
[[nodiscard]] QString fishCompletion(const QVector<cMyCommand>& commands);

/// What is offered for an operand, or for an option's value.
struct Offer
{
    Completion completion;
    const char* name;        ///< of the script's function that offers it
    QStringList words;       ///< that may be typed
    bool takesFiles = false; ///< the names of files are offered, too,
    QStringList suffixes;    ///< those that end like this; all if there is none
};

/// One for each kind of completion.
[[nodiscard]] const QVector<Offer>& offers();
[[nodiscard]] const Offer& offerFor(Completion completion);

/// As an option is typed: its name, and before that its letter if it has one.
[[nodiscard]] QStringList spellings(const cMyOption& option);

/// Whether the next word is its value.
[[nodiscard]] bool takesValue(const cMyOption& option);

} // namespace papers

#endif
