// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_FILENAME_H
#define MIOLKA_IMAGE_FILENAME_H

#include <QByteArray>
#include <QString>

/// File names that came in as bytes. A name that is not valid UTF-8 must neither open nor create
/// some other file whose name merely looks like it.
namespace image {

/// The name as text. Bytes that are not valid UTF-8 become lone surrogates, which no file name
/// can hold: isEncodable() is false for such a name.
[[nodiscard]] QString decodeFileName(const QByteArray& utf8);

/// Whether the text can be turned into the bytes of exactly one file name.
[[nodiscard]] bool isEncodable(const QString& path);

/// Whether the path does not stand for the file it came from: it cannot be encoded, or it is
/// relative to a directory whose name is not valid UTF-8, or it holds the replacement character (as
/// file dialogs show undecodable names) and there is no such file.
[[nodiscard]] bool isMangled(const QString& path);

/// Whether there is a regular file of this name. Opening a FIFO waits for its other end, and a
/// device node has no end.
[[nodiscard]] bool isRegularFile(const QString& path);

/// The file that opening this path for writing would open or create, symbolic links followed as
/// the system follows them. Empty if there can be none (links in a loop, a missing directory) or if
/// its name is not valid UTF-8.
[[nodiscard]] QString writeTarget(const QString& path);

} // namespace image

#endif
