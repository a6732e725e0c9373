// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_CONFIRMATION_H
#define MIOLKA_CLI_CONFIRMATION_H

#include "cli/outcome.h"

class cMyConsole;
struct cMyInvocation;

namespace cli {

/// Asks the question, unless --yes answers it. Cancelled if the answer is no.
[[nodiscard]] cMyOutcome confirm(const cMyInvocation& invocation, cMyConsole& console,
                                 const QString& question);

} // namespace cli

#endif
