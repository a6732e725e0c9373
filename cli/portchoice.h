// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PORTCHOICE_H
#define MIOLKA_CLI_PORTCHOICE_H

#include "cli/outcome.h"
#include "cli/portsearch.h"

struct cMyInvocation;

/// Which device a command is for.
namespace cli {

/// The port that --port names, or that of the only device attached. NoDevice, with the way out, if
/// there is none, if there are several, or if it is a boot loader.
[[nodiscard]] cMyOutcome choosePort(const cMyInvocation& invocation, cMyFoundPort& port);

/// All devices attached. NoDevice if there is none.
[[nodiscard]] cMyOutcome chooseAllPorts(QVector<cMyFoundPort>& ports);

} // namespace cli

#endif
