// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_SAVEDFILES_H
#define MIOLKA_TESTS_SUPPORT_SAVEDFILES_H

#include "tests/support/template.h"

#include <QDir>
#include <QStringList>

/// What the tests of saving write, and what they expect to find.
namespace support {

/// What is in a file before it is saved over.
inline const QByteArray oldText = "these bytes are not ours to lose";

/// Gives the image one value all over.
inline void fill(cMyMemoryArea& area, quint8 value)
{
    area.setData(0, QVector<quint8>(1024, value));
}

/// The settings file of such an image.
inline QByteArray filledText(char value)
{
    return support::settingsText(QByteArray(1024, value));
}

/// Everything in a directory, hidden files too.
inline QStringList entriesOf(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                     QDir::NoDotAndDotDot);
}

} // namespace support

#endif
