// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_COMMANDTABLE_H
#define MIOLKA_CLI_COMMANDTABLE_H

#include "cli/outcome.h"

#include <QVector>

class cMyConsole;
struct cMyInvocation;

/// What a shell may offer where an operand or an option's value is typed.
enum class Completion {
    None,
    SettingsFile, ///< .mio
    ImageSource,  ///< a settings file, "device" or "default"
    LibraryFile,  ///< .mia, .mic
    Profile,      ///< a dive log (.csv, .ssrf, .xml, .uddf) or the name of a built-in profile
    Picture,      ///< .svg, .png
    File,
    Directory,
    Port,
    Field,      ///< the name of a field
    Assignment, ///< the name of a field and "="
};

/// What follows the name of a command. All rows live as long as the program.
struct cMyOperand
{
    const char* name; ///< as in the synopsis: FILE
    Completion completion;
    bool isRepeated = false; ///< one or more; the last operand only
    bool isOptional = false;
};

/// What may stand anywhere behind the name of a command.
struct cMyOption
{
    char letter; ///< '\0' if it has none
    const char* name;
    const char* valueName; ///< empty if it takes no value
    Completion completion;
    const char* summary; ///< a sentence without its full stop
};

/// A row of the table. Texts are English and in UTF-8.
struct cMyCommand
{
    const char* name;
    QVector<cMyOperand> operands;
    QVector<cMyOption> options; ///< besides those that all commands have
    const char* summary;        ///< one line without a full stop, beginning in lower case
    const char* details;        ///< for its help and manual page; paragraphs parted by a blank line

    /// Is called once, for an invocation that was checked against the row.
    cli::ExitStatus (*run)(const cMyInvocation& invocation, cMyConsole& console);
};

/// The one table that the parser, the help, the manual page and the completions are made from.
namespace cli {

/// Every command, in the order of the help.
[[nodiscard]] const QVector<cMyCommand>& commands();

/// The row of that name; none if there is no such command.
[[nodiscard]] const cMyCommand* findCommand(const QString& name);

/// What every command understands.
[[nodiscard]] const QVector<cMyOption>& commonOptions();

/// What each exit status means, in their order.
struct StatusMeaning
{
    ExitStatus status;
    const char* meaning;
};

/// Each status once.
[[nodiscard]] const QVector<StatusMeaning>& exitStatuses();

/// A command with its operands, as in "set FILE FIELD=VALUE...".
[[nodiscard]] QString synopsis(const cMyCommand& command);

} // namespace cli

#endif
