// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PAPERS_MANPAGE_H
#define MIOLKA_CLI_PAPERS_MANPAGE_H

#include "cli/commandtable.h"

namespace papers {

/// The manual page of a program with these commands, in roff.
[[nodiscard]] QString manPage(const QVector<cMyCommand>& commands);

} // namespace papers

#endif
