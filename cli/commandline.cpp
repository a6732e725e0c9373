// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"
#include "cli/fieldnames.h"
#include "cli/helptext.h"
#include "cli/invocation.h"
#include "image/filename.h"

#include <QCommandLineParser>

namespace {

QStringList names(const cMyOption& option)
{
    QStringList names{QLatin1String(option.name)};
    if (option.letter != '\0') {
        names.prepend(QString(QLatin1Char(option.letter)));
    }
    return names;
}

void addOptions(QCommandLineParser& parser, const QVector<cMyOption>& options)
{
    for (const cMyOption& option : options) {
        // Commands share some options, and the first look at the line is for all of them.
        parser.addOption(QCommandLineOption(names(option), QLatin1String(option.summary),
                                            QLatin1String(option.valueName)));
    }
}

/// The first operand of a line, whichever command it is.
QString commandName(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser, cli::commonOptions());
    QStringList known;
    for (const cMyCommand& command : cli::commands()) {
        for (const cMyOption& option : command.options) {
            if (!known.contains(QLatin1String(option.name))) {
                known.append(QLatin1String(option.name));
                addOptions(parser, {option});
            }
        }
    }
    parser.parse(arguments);
    return parser.positionalArguments().value(0);
}

/// The number of the first argument whose bytes no text stands for; 0 if there is none. It must
/// not open a file whose name looks alike.
int firstMangled(const QStringList& arguments)
{
    for (int i = 1; i < arguments.size(); ++i) {
        if (!image::isEncodable(arguments.at(i))) {
            return i;
        }
    }
    return 0;
}

QString operandError(const cMyCommand& command, int count)
{
    int least = 0;
    bool isOpen = false;
    for (const cMyOperand& operand : command.operands) {
        least += operand.isOptional ? 0 : 1;
        isOpen = isOpen || operand.isRepeated;
    }
    if (count >= least && (isOpen || count <= command.operands.size())) {
        return {};
    }
    return QStringLiteral("%1 (use: miolkactl %2)")
        .arg(count < least ? QStringLiteral("an operand is missing")
                           : QStringLiteral("too many operands"),
             cli::synopsis(command));
}

/// An option without its value would mean something that nobody asked for, such as the working
/// directory.
QString valueError(const cMyInvocation& invocation)
{
    for (const cMyOption& option : cli::commonOptions() + invocation.command->options) {
        if (*option.valueName != '\0' && invocation.has(option.name) &&
            invocation.value(option.name).isEmpty()) {
            return QStringLiteral("--%1 needs a value").arg(QLatin1String(option.name));
        }
    }
    return {};
}

QString commandError(const QString& name)
{
    QStringList names;
    for (const cMyCommand& command : cli::commands()) {
        names.append(QLatin1String(command.name));
    }
    const QStringList likely = cli::nearest(name, names);
    return QStringLiteral("there is no command \"%1\"; %2")
        .arg(name, likely.isEmpty()
                       ? QStringLiteral("\"miolkactl --help\" lists them all")
                       : QStringLiteral("do you mean %1?").arg(likely.join(QStringLiteral(", "))));
}

cMyCommandLine failure(const QString& text)
{
    return {cMyCommandLine::Kind::Error, {}, text};
}

cMyInvocation invocationOf(const QCommandLineParser& parser, const cMyCommand& command)
{
    cMyInvocation invocation;
    invocation.command = &command;
    invocation.operands = parser.positionalArguments().mid(1);
    for (const cMyOption& option : cli::commonOptions() + command.options) {
        const QString name = QLatin1String(option.name);
        if (parser.isSet(name)) {
            invocation.options.insert(name,
                                      *option.valueName == '\0' ? QString() : parser.value(name));
        }
    }
    return invocation;
}

} // namespace

namespace cli {

cMyCommandLine parseCommandLine(const QStringList& arguments)
{
    const int mangled = firstMangled(arguments);
    if (mangled > 0) {
        return failure(QStringLiteral("argument %1 is not valid UTF-8").arg(mangled));
    }
    const QString name = commandName(arguments);
    const cMyCommand* command = findCommand(name);
    QCommandLineParser parser;
    addOptions(parser, commonOptions());
    if (command != nullptr) {
        addOptions(parser, command->options);
    }
    const bool isParsed = parser.parse(arguments);
    if (parser.isSet(QStringLiteral("help"))) {
        return {cMyCommandLine::Kind::Help, {}, helpText(command)};
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return {cMyCommandLine::Kind::Version, {}, QStringLiteral("miolkactl " MIOLKA_VERSION)};
    }
    if (name.isEmpty()) {
        return failure(isParsed ? QStringLiteral("a command is missing (see miolkactl --help)")
                                : parser.errorText());
    }
    if (command == nullptr) {
        return failure(commandError(name));
    }
    if (!isParsed) {
        return failure(parser.errorText());
    }
    const cMyInvocation invocation = invocationOf(parser, *command);
    QString error = operandError(*command, static_cast<int>(invocation.operands.size()));
    if (error.isEmpty()) {
        error = valueError(invocation);
    }
    return error.isEmpty() ? cMyCommandLine{cMyCommandLine::Kind::Command, invocation, {}}
                           : failure(error);
}

} // namespace cli
