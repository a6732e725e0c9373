// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_OUTCOME_H
#define MIOLKA_CLI_OUTCOME_H

#include <QStringList>

namespace cli {

/// What the program returns to its caller; the numbers are documented and fixed.
enum class ExitStatus : int {
    Done = 0,
    Differs = 1,    ///< two sets of settings are not the same
    Usage = 2,      ///< the command line is not understood
    NoDevice = 3,   ///< there is none, or there are several and none was named
    NotAllowed = 4, ///< the port is in use or forbidden
    BadFile = 5,    ///< a file cannot be read or written, or its contents are at fault
    Protocol = 6,   ///< the device does not answer, or not as it should, or is gone
    Mismatch = 7,   ///< what was written is not what is read back
    Cancelled = 130 ///< by Ctrl-C, or by the answer to a question
};

} // namespace cli

/// How something ended that may fail: core code returns it, commands tell it. A value.
struct cMyOutcome
{
    cli::ExitStatus status = cli::ExitStatus::Done;
    QStringList reasons; ///< what is wrong, a sentence for each line; empty if nothing is

    /// Whether it went well: nothing else has the status Done.
    [[nodiscard]] bool isDone() const { return status == cli::ExitStatus::Done; }
};

#endif
