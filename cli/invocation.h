// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_INVOCATION_H
#define MIOLKA_CLI_INVOCATION_H

#include <QHash>
#include <QString>
#include <QStringList>

struct cMyCommand;

/// One command as it was asked for: its operands and options, checked against the command table.
/// A value.
struct cMyInvocation
{
    const cMyCommand* command = nullptr; ///< a row of the table
    QStringList operands;
    QHash<QString, QString>
        options; ///< given ones by their names; the value is empty if it has none

    /// Whether the option was given, by its name without dashes.
    [[nodiscard]] bool has(const char* option) const
    {
        return options.contains(QLatin1String(option));
    }
    /// The value of an option; empty if it was not given.
    [[nodiscard]] QString value(const char* option) const
    {
        return options.value(QLatin1String(option));
    }
};

/// What a command line turned out to be.
struct cMyCommandLine
{
    /// Help and Version ask for a text only; Error is told with the status Usage.
    enum class Kind { Command, Help, Version, Error };

    Kind kind = Kind::Error;
    cMyInvocation invocation; ///< of a command; of help, at most its command
    QString text;             ///< of help, of the version, or what is wrong
};

namespace cli {

/// Reads a command line, which begins with the program's own name.
[[nodiscard]] cMyCommandLine parseCommandLine(const QStringList& arguments);

} // namespace cli

#endif
