// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_INTERRUPTION_H
#define MIOLKA_CLI_SYSTEM_INTERRUPTION_H

/// Ctrl-C, a polite kill, and a terminal that is closed. The first asks whatever runs to stop in an
/// orderly way; a second ends the program at once.
namespace cli {

/// To be called once, before anything is read or sent. Calls that wait are interrupted. A
/// signal that is ignored at the time stays so.
void catchInterruptions();

/// Whether the user wants to stop. Any thread.
[[nodiscard]] bool isInterrupted();

/// Waits until the file descriptor has something to read or has ended; false if the user wants to
/// stop, at whichever moment that becomes known. Where the system ends the reading itself when the
/// user wants to stop (Windows), nothing is waited for.
[[nodiscard]] bool waitForInput(int descriptor);

} // namespace cli

#endif
