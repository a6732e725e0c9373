// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/helptext.h"

namespace {

constexpr int lineWidth = 80;
constexpr int indent = 2;
constexpr int gap = 2; ///< between a term and what it means
constexpr int longestTerm = 16;

const QString paragraphBreak = QStringLiteral("\n\n");

/// All lines but the first begin with a margin; the first stands behind as much.
QString withMargin(const QString& text, int margin)
{
    return cli::wrapped(text, lineWidth - margin)
        .join(QLatin1Char('\n') + QString(margin, QLatin1Char(' ')));
}

/// A term with its meaning beside it, or below it if the term is long.
QString entry(const QString& term, const QString& meaning)
{
    constexpr int margin = indent + longestTerm + gap;
    const QString start = QString(indent, QLatin1Char(' ')) + term;
    const QString space = term.size() > longestTerm
                              ? QLatin1Char('\n') + QString(margin, QLatin1Char(' '))
                              : QString(margin - start.size(), QLatin1Char(' '));
    return start + space + withMargin(meaning, margin) + QLatin1Char('\n');
}

QString optionEntries(const QString& title, const QVector<cMyOption>& options)
{
    QString text = QLatin1Char('\n') + title + QLatin1Char('\n');
    for (const cMyOption& option : options) {
        text += entry(cli::optionText(option), QLatin1String(option.summary));
    }
    return text;
}

QString programHelp()
{
    QString text = QStringLiteral("Usage: miolkactl [options] COMMAND ...\n\n%1\n\nCommands:\n")
                       .arg(withMargin(cli::purpose(), 0));
    for (const cMyCommand& command : cli::commands()) {
        text += entry(QLatin1String(command.name), QLatin1String(command.summary));
    }
    text += optionEntries(QStringLiteral("Options of every command:"), cli::commonOptions());
    text += QStringLiteral("\nExit status:\n");
    for (const cli::StatusMeaning& row : cli::exitStatuses()) {
        text += entry(QString::number(static_cast<int>(row.status)), QLatin1String(row.meaning));
    }
    return text + QStringLiteral("\nmiolkactl COMMAND --help tells more of a command.\n");
}

QString operandEntries(const cMyCommand& command)
{
    QString text;
    for (const cMyOperand& operand : command.operands) {
        text += entry(QLatin1String(operand.name), cli::operandText(operand.completion));
    }
    return text.isEmpty() ? text : QStringLiteral("\nOperands:\n") + text;
}

QString commandHelp(const cMyCommand& command)
{
    QString text = QStringLiteral("Usage: miolkactl [options] %1\n\n%2\n")
                       .arg(cli::synopsis(command), withMargin(cli::sentence(command.summary), 0));
    const QStringList details = cli::paragraphs(command);
    for (const QString& paragraph : details) {
        text += QLatin1Char('\n') + withMargin(paragraph, 0) + QLatin1Char('\n');
    }
    text += operandEntries(command);
    if (!command.options.isEmpty()) {
        text += optionEntries(QStringLiteral("Options:"), command.options);
    }
    return text + optionEntries(QStringLiteral("Options of every command:"), cli::commonOptions());
}

} // namespace

namespace cli {

QString helpText(const cMyCommand* command)
{
    return command == nullptr ? programHelp() : commandHelp(*command);
}

QString operandText(Completion completion)
{
    switch (completion) {
    case Completion::SettingsFile:
        return QStringLiteral("a settings file (.mio)");
    case Completion::ImageSource:
        return QStringLiteral("a settings file, \"device\" for the settings of the attached "
                              "device, or \"default\" for the built-in ones; a file of such a "
                              "name is ./device or ./default");
    case Completion::LibraryFile:
        return QStringLiteral("a sound or messages library (.mia, .mic)");
    case Completion::Profile:
        return QStringLiteral("a dive log (.csv, .ssrf, .xml, .uddf), or the name of a built-in "
                              "dive: freedive, square or sawtooth");
    case Completion::Picture:
        return QStringLiteral("a picture (.svg, .png)");
    case Completion::Directory:
        return QStringLiteral("a directory");
    case Completion::Port:
        return QStringLiteral("a serial port, such as ttyACM0");
    case Completion::Field:
        return QStringLiteral("the name of a field, as miolkactl show prints it");
    case Completion::Assignment:
        return QStringLiteral("the name of a field, \"=\" and its new value");
    case Completion::File:
    case Completion::None:
        break;
    }
    return QStringLiteral("a file");
}

QString optionText(const cMyOption& option)
{
    const QString letter =
        option.letter == '\0' ? QString() : QStringLiteral("-%1, ").arg(QLatin1Char(option.letter));
    const QString value =
        *option.valueName == '\0' ? QString() : QLatin1Char(' ') + QLatin1String(option.valueName);
    return letter + QStringLiteral("--") + QLatin1String(option.name) + value;
}

QString purpose()
{
    return QStringLiteral(
        "Reads, checks, compares and writes the settings of Miolka dive devices, looks after the "
        "devices themselves, and rehearses dives with a virtual one.");
}

QString sentence(const char* phrase)
{
    QString text = QLatin1String(phrase);
    if (!text.isEmpty()) {
        text[0] = text.at(0).toUpper();
    }
    return text + QLatin1Char('.');
}

QStringList wrapped(const QString& text, int width)
{
    QStringList lines;
    QString line;
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    for (const QString& word : words) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            lines.append(line);
            line.clear();
        }
        line += line.isEmpty() ? word : QLatin1Char(' ') + word;
    }
    return lines << line;
}

QStringList paragraphs(const cMyCommand& command)
{
    return QString::fromUtf8(command.details).split(paragraphBreak, Qt::SkipEmptyParts);
}

} // namespace cli
