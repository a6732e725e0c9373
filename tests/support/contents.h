// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_CONTENTS_H
#define MIOLKA_TESTS_SUPPORT_CONTENTS_H

#include <QByteArray>
#include <QFile>
#include <QString>

/// Files of those who tell a failure themselves; support::readFile() and support::writeFile() end
/// the test instead.
namespace support {

/// What a file holds; empty if it cannot be read.
inline QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes these bytes all that the file holds; false if they could not be written.
[[nodiscard]] inline bool replaceContents(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace support

#endif
