// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/papers/completions.h"
#include "cli/papers/quoting.h"
#include "cli/shellword.h"

namespace {

using cli::shellWord;
using papers::Offer;
using papers::shellWords;
using papers::zshPlain;

const char head[] = R"(#compdef miolkactl
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

)";

QString filesLine(const QStringList& suffixes)
{
    if (suffixes.isEmpty()) {
        return QStringLiteral("    _files \"$@\"\n");
    }
    QStringList plain;
    for (const QString& suffix : suffixes) {
        plain.append(suffix.mid(1));
    }
    // Parentheses at the end would be taken for qualifiers; these say: files, through links, too.
    return QStringLiteral("    _files \"$@\" -g %1\n")
        .arg(shellWord(QStringLiteral("*.(%1)(-.)").arg(plain.join(QLatin1Char('|')))));
}

QString offerFunction(const Offer& offer)
{
    QString body;
    if (!offer.words.isEmpty()) {
        // What follows "=" is typed without a space.
        body +=
            QLatin1String(offer.completion == Completion::Assignment ? "    compadd \"$@\" -S '' --"
                                                                     : "    compadd \"$@\" --") +
            shellWords(offer.words) + QLatin1Char('\n');
    }
    if (offer.completion == Completion::Directory) {
        body += QStringLiteral("    _files \"$@\" -/\n");
    }
    if (offer.completion == Completion::Port) {
        body += QStringLiteral("    compadd \"$@\" -- /dev/ttyACM*(N:t)\n");
    }
    if (offer.takesFiles) {
        body += filesLine(offer.suffixes);
    }
    return QStringLiteral("_miolkactl_%1() {\n").arg(QLatin1String(offer.name)) +
           (body.isEmpty() ? QStringLiteral("    return 1\n") : body) + QStringLiteral("}\n");
}

/// An argument of _arguments for each spelling of the option; one excludes the others.
QString optionLines(const QVector<cMyOption>& options)
{
    QString text;
    for (const cMyOption& option : options) {
        const QStringList typed = papers::spellings(option);
        for (const QString& spelling : typed) {
            const bool isLong = spelling.startsWith(QLatin1String("--"));
            QString line = QStringLiteral("(%1)").arg(typed.join(QLatin1Char(' '))) + spelling;
            if (papers::takesValue(option)) {
                line += QLatin1Char(isLong ? '=' : '+');
            }
            line +=
                QLatin1Char('[') + zshPlain(QString::fromUtf8(option.summary)) + QLatin1Char(']');
            if (papers::takesValue(option)) {
                line += QLatin1Char(':') + zshPlain(QLatin1String(option.valueName)) +
                        QStringLiteral(":_miolkactl_") +
                        QLatin1String(papers::offerFor(option.completion).name);
            }
            text += QStringLiteral(" \\\n                ") + shellWord(line);
        }
    }
    return text;
}

QString operandLines(const cMyCommand& command)
{
    QString text;
    for (int i = 0; i < command.operands.size(); ++i) {
        const cMyOperand& operand = command.operands.at(i);
        const QString place = operand.isRepeated ? QStringLiteral("*") : QString::number(i + 1);
        text += QStringLiteral(" \\\n                ") +
                shellWord(place + QLatin1Char(':') + zshPlain(QLatin1String(operand.name)) +
                          QStringLiteral(":_miolkactl_") +
                          QLatin1String(papers::offerFor(operand.completion).name));
    }
    return text;
}

QString commandBranch(const cMyCommand& command)
{
    return QStringLiteral("        ") + shellWord(QLatin1String(command.name)) +
           QStringLiteral(")\n            _arguments -s -S $common") +
           optionLines(command.options) + operandLines(command) + QStringLiteral(" ;;\n");
}

QString mainFunction(const QVector<cMyCommand>& commands)
{
    QString names;
    QString branches;
    for (const cMyCommand& command : commands) {
        names += QStringLiteral("        ") +
                 shellWord(zshPlain(QLatin1String(command.name)) + QLatin1Char(':') +
                           QString::fromUtf8(command.summary)) +
                 QLatin1Char('\n');
        branches += commandBranch(command);
    }
    QString common = optionLines(cli::commonOptions());
    common.remove(QLatin1String(" \\"));
    return QStringLiteral("_miolkactl() {\n    local curcontext=$curcontext state line\n"
                          "    typeset -A opt_args\n    local -a commands common\n"
                          "    commands=(\n") +
           names + QStringLiteral("    )\n    common=(") + common +
           QStringLiteral(
               "\n    )\n"
               "    _arguments -C -s -S $common '(-)1: :->command' '(-)*:: :->operands' && return\n"
               "    case $state in\n"
               "    command) _describe -t commands command commands ;;\n"
               "    operands)\n        case $words[1] in\n") +
           branches + QStringLiteral("        esac ;;\n    esac\n}\n\n");
}

} // namespace

namespace papers {

QString zshCompletion(const QVector<cMyCommand>& commands)
{
    QString script = QLatin1String(head);
    for (const Offer& offer : offers()) {
        script += offerFunction(offer);
    }
    return script + mainFunction(commands) + QStringLiteral("_miolkactl \"$@\"\n");
}

} // namespace papers
