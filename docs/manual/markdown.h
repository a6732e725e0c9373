// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_MARKDOWN_H
#define MIOLKA_DOCS_MANUAL_MARKDOWN_H

#include <QString>
#include <QStringList>
#include <QVector>

namespace manual {

/// A text as it stands, whatever its characters mean in Markdown.
[[nodiscard]] QString literal(const QString& text);

/// A column of a table.
struct Column
{
    QString heading;
    int share; ///< of the table's width, in percent
};

/// A pipe table. Cells are Markdown; paragraphs in them are kept apart. A caption may be empty.
[[nodiscard]] QString table(const QVector<Column>& columns, const QVector<QStringList>& rows,
                            const QString& caption = {});

/// Text that a class of the style sheet is for.
[[nodiscard]] QString block(const QString& styleClass, const QString& text);

} // namespace manual

#endif
