// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/papers/completions.h"
#include "cli/papers/quoting.h"

namespace {

using papers::fishWord;
using papers::Offer;

const char wordsFunction[] = R"(# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

# What was typed so far without options and their values: the command, then its operands.
function __miolkactl_words
    set -l is_value 0
    set -l tokens (commandline -opc)
    for token in $tokens[2..-1]
        if test $is_value = 1
            set is_value 0
        else if contains -- $token%1
            set is_value 1
        else if not string match -q -- '-*' $token
            printf '%s\n' $token
        end
    end
end

)";

const char helpers[] = R"(# Whether the command is that.
function __miolkactl_in
    set -l words (__miolkactl_words)
    test "$words[1]" = $argv[1]
end

# Whether that operand of the command is next, counted from 1; or any after it for "-ge".
function __miolkactl_at
    set -l words (__miolkactl_words)
    test "$words[1]" = $argv[1]; and test (count $words) $argv[2] $argv[3]
end

# Directories, and files that end in one of the suffixes.
function __miolkactl_files
    set -l typed (commandline -ct | string replace -r '^--[^=]*=' '')
    set -l names $typed*
    for name in $names
        if test -d $name
            printf '%s/\n' $name
        end
        for suffix in $argv
            if string match -q -- "*$suffix" $name
                printf '%s\n' $name
            end
        end
    end
end

function __miolkactl_ports
    set -l nodes /dev/ttyACM*
    for node in $nodes
        string replace /dev/ '' $node
    end
end

complete -c miolkactl -f
)";

QString words(const QStringList& texts)
{
    QStringList quoted;
    for (const QString& text : texts) {
        quoted.append(fishWord(text));
    }
    return quoted.join(QLatin1Char(' '));
}

/// The words of an offer as the shell takes them: quoted once more, as they are expanded later.
QString candidates(const Offer& offer)
{
    QString list = words(offer.words);
    if (offer.completion == Completion::Port) {
        list = QStringLiteral("(__miolkactl_ports)");
    }
    if (offer.completion == Completion::Directory) {
        list = QStringLiteral("(__fish_complete_directories)");
    }
    if (!offer.suffixes.isEmpty()) {
        list += QStringLiteral(" (__miolkactl_files %1)").arg(words(offer.suffixes));
    }
    return list.isEmpty() ? QString() : QStringLiteral(" -a ") + fishWord(list);
}

/// All files are the shell's own business.
QString fileFlag(const Offer& offer)
{
    const bool takesAll = offer.takesFiles && offer.suffixes.isEmpty();
    return QLatin1String(takesAll ? " -F" : " -f");
}

QString optionLine(const cMyOption& option, const QString& condition)
{
    QString line = QStringLiteral("complete -c miolkactl") + condition;
    if (option.letter != '\0') {
        line += QStringLiteral(" -s ") + QLatin1Char(option.letter);
    }
    line += QStringLiteral(" -l ") + fishWord(QLatin1String(option.name));
    if (papers::takesValue(option)) {
        const Offer& offer = papers::offerFor(option.completion);
        line += QStringLiteral(" -r") + fileFlag(offer) + candidates(offer);
    }
    return line + QStringLiteral(" -d ") + fishWord(QString::fromUtf8(option.summary)) +
           QLatin1Char('\n');
}

QString condition(const QString& test)
{
    return QStringLiteral(" -n ") + fishWord(test);
}

QString operandLine(const QString& command, const cMyOperand& operand, int number)
{
    const Offer& offer = papers::offerFor(operand.completion);
    const QString test = QStringLiteral("__miolkactl_at ") + fishWord(command) +
                         (operand.isRepeated ? QStringLiteral(" -ge ") : QStringLiteral(" -eq ")) +
                         QString::number(number);
    return QStringLiteral("complete -c miolkactl") + condition(test) + fileFlag(offer) +
           candidates(offer) + QLatin1Char('\n');
}

QString commandLines(const cMyCommand& command)
{
    const QString name = QLatin1String(command.name);
    QString text = QStringLiteral("complete -c miolkactl") +
                   condition(QStringLiteral("test (count (__miolkactl_words)) -eq 0")) +
                   QStringLiteral(" -a ") + fishWord(fishWord(name)) + QStringLiteral(" -d ") +
                   fishWord(QString::fromUtf8(command.summary)) + QLatin1Char('\n');
    const QString isInCommand = condition(QStringLiteral("__miolkactl_in ") + fishWord(name));
    for (const cMyOption& option : command.options) {
        text += optionLine(option, isInCommand);
    }
    for (int i = 0; i < command.operands.size(); ++i) {
        text += operandLine(name, command.operands.at(i), i + 1);
    }
    return text;
}

/// Options of any command after which a value follows.
QString valueOptions(const QVector<cMyCommand>& commands)
{
    QVector<cMyOption> options = cli::commonOptions();
    for (const cMyCommand& command : commands) {
        options += command.options;
    }
    QStringList typed;
    for (const cMyOption& option : qAsConst(options)) {
        typed += papers::takesValue(option) ? papers::spellings(option) : QStringList();
    }
    typed.removeDuplicates();
    return QLatin1Char(' ') + words(typed);
}

} // namespace

namespace papers {

QString fishCompletion(const QVector<cMyCommand>& commands)
{
    QString script = QLatin1String(wordsFunction);
    script.replace(QLatin1String("%1"), valueOptions(commands));
    script += QLatin1String(helpers);
    for (const cMyOption& option : cli::commonOptions()) {
        script += optionLine(option, {});
    }
    for (const cMyCommand& command : commands) {
        script += commandLines(command);
    }
    return script;
}

} // namespace papers
