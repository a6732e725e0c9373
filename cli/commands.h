// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_COMMANDS_H
#define MIOLKA_CLI_COMMANDS_H

#include "cli/outcome.h"

class cMyConsole;
struct cMyInvocation;

/// The commands, each called once for an invocation that was checked against the command table.
/// They tell everything on the console, errors too.
namespace cli {

/// What the system knows of devices and ports; "doctor" judges it.
ExitStatus runPorts(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runDoctor(const cMyInvocation& invocation, cMyConsole& console);

/// What asks a device or writes to it. All but "status", "read" and "verify" ask the user first.
ExitStatus runStatus(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runRead(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runWrite(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runVerify(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runUpload(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runReset(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runClearStats(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runPowerOff(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runBoot(const cMyInvocation& invocation, cMyConsole& console);

/// What works on settings, of a file, of the built-in defaults, or of a device.
ExitStatus runShow(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runGet(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runSet(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runDiff(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runCheck(const cMyInvocation& invocation, cMyConsole& console);
ExitStatus runNew(const cMyInvocation& invocation, cMyConsole& console);

/// Dives on land: the dive itself needs no device.
ExitStatus runRehearse(const cMyInvocation& invocation, cMyConsole& console);

} // namespace cli

#endif
