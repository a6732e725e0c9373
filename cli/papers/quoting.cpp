// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/papers/quoting.h"

#include "cli/shellword.h"

namespace {

/// Characters that roff would print as others, or take for a command.
QString roffCharacter(QChar character)
{
    switch (character.unicode()) {
    case '\\':
        return QStringLiteral("\\e");
    case '-':
        return QStringLiteral("\\-");
    case '\'':
        return QStringLiteral("\\(aq");
    case '"':
        return QStringLiteral("\\(dq");
    case '`':
        return QStringLiteral("\\(ga");
    case '^':
        return QStringLiteral("\\(ha");
    case '~':
        return QStringLiteral("\\(ti");
    default:
        return character;
    }
}

/// A backslash before each of the characters.
QString escaped(const QString& text, const QString& special)
{
    QString result;
    for (const QChar character : text) {
        if (special.contains(character)) {
            result += QLatin1Char('\\');
        }
        result += character;
    }
    return result;
}

} // namespace

namespace papers {

QString roff(const QString& text)
{
    // A line that begins with a dot is a command.
    QString result = text.startsWith(QLatin1Char('.')) ? QStringLiteral("\\&") : QString();
    for (const QChar character : text) {
        result += roffCharacter(character);
    }
    return result;
}

QString shellWords(const QStringList& texts)
{
    QString line;
    for (const QString& text : texts) {
        line += QLatin1Char(' ') + cli::shellWord(text);
    }
    return line;
}

QString fishWord(const QString& text)
{
    return QLatin1Char('\'') + escaped(text, QStringLiteral("\\'")) + QLatin1Char('\'');
}

QString zshPlain(const QString& text)
{
    return escaped(text, QStringLiteral("\\:[]()"));
}

} // namespace papers
