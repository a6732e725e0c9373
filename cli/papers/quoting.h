// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PAPERS_QUOTING_H
#define MIOLKA_CLI_PAPERS_QUOTING_H

#include <QStringList>

/// Text that stands for itself in a file of that kind, whatever is in it.
namespace papers {

/// A line of text for roff.
[[nodiscard]] QString roff(const QString& text);

/// Words for bash and zsh, each as cli::shellWord() has it and with a blank before it.
[[nodiscard]] QString shellWords(const QStringList& texts);

/// One word for fish, in quotes.
[[nodiscard]] QString fishWord(const QString& text);

/// For a place in which zsh takes some characters for marks, before it is quoted.
[[nodiscard]] QString zshPlain(const QString& text);

} // namespace papers

#endif
