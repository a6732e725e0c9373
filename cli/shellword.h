// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SHELLWORD_H
#define MIOLKA_CLI_SHELLWORD_H

#include <QString>

namespace cli {

/// The text as one word of a command line for a shell of POSIX, in quotes where it needs them.
[[nodiscard]] QString shellWord(const QString& text);

} // namespace cli

#endif
