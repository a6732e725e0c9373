// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DIAGNOSIS_H
#define MIOLKA_CLI_DIAGNOSIS_H

#include "cli/outcome.h"
#include "cli/portprobe.h"
#include "cli/portsearch.h"
#include "cli/system/currentuser.h"
#include "cli/system/systemlook.h"

#include <functional>

/// A way out, with the lines to type if there are any.
struct cMyRemedy
{
    QString text;
    QStringList commands;
};

/// Something that was found out about a device, or about there being none.
struct cMyFinding
{
    const char* kind; ///< a word that stands for it, the same for ever
    QString port;     ///< its path; of a device without one its USB name, or empty
    QString text;
    QVector<cMyRemedy> remedies;
    cli::ExitStatus status = cli::ExitStatus::Done; ///< what it means for the work with the device
};

/// What a diagnosis is made from.
struct cMyExamination
{
    cMySystemLook system;
    QVector<cMyFoundPort> ports;
    cMyUser user;
    QString chosenPort; ///< the name or path of the only port that matters; empty if all do
    std::function<cMyPortProbe(const QString& path)> probe = cli::probePort; ///< opens a port
    std::function<bool(const QString& path)> answers; ///< asked of what can be opened
};

namespace cli {

/// Why devices are not found or cannot be used; of those that can, that they can.
[[nodiscard]] QVector<cMyFinding> diagnose(const cMyExamination& examination);

/// Whether a device can be worked with, and otherwise the first reason why not.
[[nodiscard]] ExitStatus statusOf(const QVector<cMyFinding>& findings);

} // namespace cli

#endif
