// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/papers/manpage.h"

#include "cli/helptext.h"
#include "cli/papers/quoting.h"

namespace {

using papers::roff;

/// Running text, in lines that are easy to read in the source.
QString prose(const QString& text)
{
    constexpr int width = 66;
    QString result;
    const QStringList lines = cli::wrapped(text, width);
    for (const QString& line : lines) {
        result += roff(line) + QLatin1Char('\n');
    }
    return result;
}

QString bold(const QString& text)
{
    return QStringLiteral("\\fB") + roff(text) + QStringLiteral("\\fR");
}

QString italic(const QString& text)
{
    return QStringLiteral("\\fI") + roff(text) + QStringLiteral("\\fR");
}

QString section(const char* title)
{
    return QStringLiteral(".SH %1\n").arg(QLatin1String(title));
}

QString entry(const QString& term, const QString& meaning)
{
    return QStringLiteral(".TP\n%1\n%2").arg(term, prose(meaning));
}

/// Its letter and its name in bold type, its value in italics.
QString optionTerm(const cMyOption& option)
{
    QString term = bold(QStringLiteral("--") + QLatin1String(option.name));
    if (option.letter != '\0') {
        term = bold(QLatin1Char('-') + QString(QLatin1Char(option.letter))) + QStringLiteral(", ") +
               term;
    }
    return *option.valueName == '\0'
               ? term
               : term + QLatin1Char(' ') + italic(QLatin1String(option.valueName));
}

QString optionEntries(const QVector<cMyOption>& options)
{
    QString text;
    for (const cMyOption& option : options) {
        text += entry(optionTerm(option), cli::sentence(option.summary));
    }
    return text;
}

QString operandsOf(const cMyCommand& command)
{
    const QString name = QLatin1String(command.name);
    return italic(cli::synopsis(command).mid(name.size() + 1));
}

QString commandSection(const cMyCommand& command)
{
    QString text =
        QStringLiteral(".SS %1%2\n%3")
            .arg(bold(QLatin1String(command.name)),
                 command.operands.isEmpty() ? QString() : QLatin1Char(' ') + operandsOf(command),
                 prose(cli::sentence(command.summary)));
    const QStringList details = cli::paragraphs(command);
    for (const QString& paragraph : details) {
        text += QStringLiteral(".PP\n%1").arg(prose(paragraph));
    }
    for (const cMyOperand& operand : command.operands) {
        text += entry(italic(QLatin1String(operand.name)),
                      cli::operandText(operand.completion) + QLatin1Char('.'));
    }
    return text + optionEntries(command.options);
}

QString statusSection()
{
    QString text = section("EXIT STATUS");
    for (const cli::StatusMeaning& row : cli::exitStatuses()) {
        const QString number = QString::number(static_cast<int>(row.status));
        text += entry(bold(number), cli::sentence(row.meaning));
    }
    return text;
}

QString filesSection()
{
    return section("FILES") +
           entry(italic(QStringLiteral("~/.local/share/MIOLKAsoft/backups")),
                 QStringLiteral("The backups: what was written over, in a device or in a file, "
                                "each with the time in its name. XDG_DATA_HOME takes the place of "
                                "~/.local/share."));
}

QString examplesSection()
{
    struct Example
    {
        const char* purpose;
        const char* line;
    };
    const QVector<Example> examples = {
        {"Keep the settings of the device in a file:", "miolkactl read my.mio"},
        {"See what a file would change in the device, then write it:",
         "miolkactl diff device my.mio; miolkactl write my.mio"},
        {"See what the device would say on a dive:",
         "miolkactl rehearse my.mio --profile freedive"},
        {"Find out why a device is not found:", "miolkactl doctor"},
    };
    QString text = section("EXAMPLES");
    for (const Example& example : examples) {
        text += QStringLiteral("%1.PP\n.RS\n.nf\n%2\n.fi\n.RE\n.PP\n")
                    .arg(prose(QLatin1String(example.purpose)), roff(QLatin1String(example.line)));
    }
    // A paragraph before a section would be an empty one.
    text.chop(static_cast<int>(qstrlen(".PP\n")));
    return text;
}

} // namespace

namespace papers {

QString manPage(const QVector<cMyCommand>& commands)
{
    QString text =
        QStringLiteral(".\\\" SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors\n"
                       ".\\\" SPDX-License-Identifier: GPL-3.0-or-later\n"
                       ".TH MIOLKACTL 1 2026-11-22 \"MIOLKAsoft %1\" \"User Commands\"\n")
            .arg(QStringLiteral(MIOLKA_VERSION));
    text += section("NAME") + QStringLiteral("miolkactl \\- Miolka dive devices and their settings "
                                             "from the command line\n");
    text += section("SYNOPSIS");
    text += QStringLiteral(".B miolkactl\n.RI [ OPTIONS ]\n.I COMMAND\n.RI [ ARGUMENTS ...]\n");
    text += section("DESCRIPTION") + prose(cli::purpose());
    text += QStringLiteral(".PP\n") +
            prose(QStringLiteral("Results go to the standard output, all else to the standard "
                                 "error. No settings are written over, in a device or in a file, "
                                 "before a backup of them was made; sounds and statistics, which "
                                 "cannot be brought back, only after a question."));
    text += section("COMMANDS");
    for (const cMyCommand& command : commands) {
        text += commandSection(command);
    }
    text += section("OPTIONS") + optionEntries(cli::commonOptions());
    text += statusSection() + filesSection() + examplesSection();
    return text + section("SEE ALSO") + QStringLiteral(".BR miolka\\-emulator (1)\n");
}

} // namespace papers
