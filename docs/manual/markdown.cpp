// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/markdown.h"

#include <QRegularExpression>

namespace {

QString tableLine(const QStringList& cells)
{
    return QStringLiteral("| %1 |\n").arg(cells.join(QStringLiteral(" | ")));
}

/// A cell is a single line.
QString cell(QString text)
{
    static const QRegularExpression paragraphEnd(QStringLiteral("\\n\\s*\\n"));
    static const QRegularExpression lineEnd(QStringLiteral("\\s*\\n\\s*"));
    return text.replace(paragraphEnd, QStringLiteral("<br>")).replace(lineEnd, QStringLiteral(" "));
}

} // namespace

namespace manual {

QString literal(const QString& text)
{
    static const QRegularExpression special(QStringLiteral("([\\\\`*_\\[\\]<>|~^$@#'\"&])"));
    return QString(text).replace(special, QStringLiteral("\\\\1"));
}

QString table(const QVector<Column>& columns, const QVector<QStringList>& rows,
              const QString& caption)
{
    // Only a table with a line of more than 72 characters keeps to the shares: these make one.
    QStringList headings;
    QStringList rules;
    for (const Column& column : columns) {
        headings += column.heading;
        rules += QString(column.share, QLatin1Char('-'));
    }
    QString text = tableLine(headings) + tableLine(rules);
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& each : row) {
            cells += cell(each);
        }
        text += tableLine(cells);
    }
    if (!caption.isEmpty()) {
        text += QStringLiteral("\n: ") + caption + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString block(const QString& styleClass, const QString& text)
{
    return QStringLiteral("::: %1\n%2\n:::\n\n").arg(styleClass, text.trimmed());
}

} // namespace manual
