// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/papers/completions.h"
#include "cli/papers/quoting.h"
#include "cli/shellword.h"

namespace {

using cli::shellWord;
using papers::Offer;
using papers::shellWords;

const char helpers[] = R"(# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Offers those of the words that begin with what was typed, which comes first.
_miolkactl_offer()
{
    local typed=$1 word
    shift
    for word; do
        [[ $word == "$typed"* ]] && COMPREPLY+=("$word")
    done
}

# Offers directories, and files that end in one of the suffixes, or all if there is none.
_miolkactl_files()
{
    local typed=$1 name suffix
    shift
    compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        if (($# == 0)) || [[ -d $name ]]; then
            COMPREPLY+=("$name")
            continue
        fi
        for suffix; do
            [[ $name == *"$suffix" ]] && COMPREPLY+=("$name")
        done
    done < <(compgen -f -- "$typed")
}

)";

const char mainFunction[] = R"(
_miolkactl()
{
    local -a words=()
    local typed word command= value= kind= i operands=0
    COMPREPLY=()
    for ((i = 1; i <= COMP_CWORD; ++i)); do
        # The shell parts words at "=".
        if ((i > 1)) && [[ ${COMP_WORDS[i]} == = || ${COMP_WORDS[i - 1]} == = ]]; then
            words[${#words[@]} - 1]+=${COMP_WORDS[i]}
        else
            words+=("${COMP_WORDS[i]}")
        fi
    done
    typed=${words[${#words[@]} - 1]}
    unset 'words[${#words[@]} - 1]'
    for word in "${words[@]}"; do
        if [[ $value ]]; then
            value=
        elif [[ $word == -* ]]; then
            _miolkactl_value "$command" "$word"
            value=$kind
        elif [[ ! $command ]]; then
            command=$word
        else
            ((++operands))
        fi
    done
    if [[ $value ]]; then
        "_miolkactl_$value" "$typed"
    elif [[ $typed == --*=* ]]; then
        _miolkactl_value "$command" "${typed%%=*}"
        [[ $kind ]] && "_miolkactl_$kind" "${typed#*=}"
    elif [[ $typed == -* ]]; then
        _miolkactl_options "$command" "$typed"
    elif [[ ! $command ]]; then
        _miolkactl_commands "$typed"
    else
        _miolkactl_operand "$command" "$operands"
        [[ $kind ]] && "_miolkactl_$kind" "$typed"
    fi
    return 0
}

complete -F _miolkactl miolkactl
)";

QStringList everySpelling(const QVector<cMyOption>& options)
{
    QStringList typed;
    for (const cMyOption& option : options) {
        typed += papers::spellings(option);
    }
    return typed;
}

QString offerFunction(const Offer& offer)
{
    QString body;
    if (offer.completion == Completion::Assignment) {
        body +=
            QStringLiteral("    [[ $1 == *=* ]] && return\n    compopt -o nospace 2>/dev/null\n");
    }
    if (offer.completion == Completion::Directory) {
        body += QStringLiteral("    compopt -o filenames 2>/dev/null\n"
                               "    mapfile -t COMPREPLY < <(compgen -d -- \"$1\")\n");
    }
    if (offer.completion == Completion::Port) {
        body += QStringLiteral("    local -a ports=(/dev/ttyACM*)\n"
                               "    [[ -e ${ports[0]} ]] || return\n"
                               "    [[ $1 == /* ]] || ports=(\"${ports[@]#/dev/}\")\n"
                               "    _miolkactl_offer \"$1\" \"${ports[@]}\"\n");
    }
    if (!offer.words.isEmpty()) {
        body += QStringLiteral("    _miolkactl_offer \"$1\"") + shellWords(offer.words) +
                QLatin1Char('\n');
    }
    if (offer.takesFiles) {
        body += QStringLiteral("    _miolkactl_files \"$1\"") + shellWords(offer.suffixes) +
                QLatin1Char('\n');
    }
    return QStringLiteral("_miolkactl_%1()\n{\n").arg(QLatin1String(offer.name)) +
           (body.isEmpty() ? QStringLiteral("    return 0\n") : body) + QStringLiteral("}\n");
}

QString caseBranch(const QString& pattern, const QString& action)
{
    return QStringLiteral("        ") + pattern + QStringLiteral(") ") + action +
           QStringLiteral(" ;;\n");
}

QString caseFunction(const char* name, const char* subject, const QString& branches)
{
    return QStringLiteral("_miolkactl_") + QLatin1String(name) +
           QStringLiteral("()\n{\n    kind=\n    case ") + QLatin1String(subject) +
           QStringLiteral(" in\n") + branches + QStringLiteral("    esac\n}\n");
}

QString kindIs(Completion completion)
{
    return QStringLiteral("kind=") + QLatin1String(papers::offerFor(completion).name);
}

/// Which values the options take; keyed by the command and the option, of common ones by "*".
QString valueFunction(const QVector<cMyCommand>& commands)
{
    QString branches;
    const auto add = [&branches](const QString& command, const cMyOption& option) {
        const QStringList typed = papers::spellings(option);
        for (const QString& spelling : typed) {
            branches += papers::takesValue(option)
                            ? caseBranch(command + shellWord(QLatin1Char(' ') + spelling),
                                         kindIs(option.completion))
                            : QString();
        }
    };
    for (const cMyOption& option : cli::commonOptions()) {
        add(QStringLiteral("*"), option);
    }
    for (const cMyCommand& command : commands) {
        for (const cMyOption& option : command.options) {
            add(shellWord(QLatin1String(command.name)), option);
        }
    }
    return caseFunction("value", "\"$1 $2\"", branches);
}

QString operandFunction(const QVector<cMyCommand>& commands)
{
    QString branches;
    for (const cMyCommand& command : commands) {
        const QString name = shellWord(QLatin1String(command.name));
        for (int i = 0; i < command.operands.size(); ++i) {
            const cMyOperand& operand = command.operands.at(i);
            const QString number = operand.isRepeated ? QStringLiteral("*") : QString::number(i);
            branches +=
                caseBranch(name + QStringLiteral("' '") + number, kindIs(operand.completion));
        }
    }
    return caseFunction("operand", "\"$1 $2\"", branches);
}

QString optionsFunction(const QVector<cMyCommand>& commands)
{
    QString branches;
    for (const cMyCommand& command : commands) {
        const QStringList own = everySpelling(command.options);
        branches += own.isEmpty()
                        ? QString()
                        : caseBranch(shellWord(QLatin1String(command.name)),
                                     QStringLiteral("_miolkactl_offer \"$2\"") + shellWords(own));
    }
    return QStringLiteral("_miolkactl_options()\n{\n    _miolkactl_offer \"$2\"") +
           shellWords(everySpelling(cli::commonOptions())) + QStringLiteral("\n    case $1 in\n") +
           branches + QStringLiteral("    esac\n}\n");
}

QString commandsFunction(const QVector<cMyCommand>& commands)
{
    QStringList names;
    for (const cMyCommand& command : commands) {
        names.append(QLatin1String(command.name));
    }
    return QStringLiteral("_miolkactl_commands()\n{\n    _miolkactl_offer \"$1\"") +
           shellWords(names) + QStringLiteral("\n}\n");
}

} // namespace

namespace papers {

QString bashCompletion(const QVector<cMyCommand>& commands)
{
    QString script = QLatin1String(helpers);
    for (const Offer& offer : offers()) {
        script += offerFunction(offer);
    }
    return script + commandsFunction(commands) + optionsFunction(commands) +
           valueFunction(commands) + operandFunction(commands) + QLatin1String(mainFunction);
}

} // namespace papers
