// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_STOREDFILE_H
#define MIOLKA_IMAGE_STOREDFILE_H

#include <QByteArray>
#include <QString>

class QFileDevice;

/// Files that are written as a whole.
namespace image {

/// Makes these bytes all that the file holds; it is on the disk when this returns.
///
/// An existing file is replaced in one step and only after all of the new one has been stored, so
/// that at any moment the path holds either the old or the new contents; symbolic links are
/// followed and the file's mode is kept. Only where the directory takes no new file is the
/// existing one written over, and restored if that fails; being killed in the middle of that is
/// the one thing that can leave neither. False if anything fails.
[[nodiscard]] bool storeFile(const QString& path, const QByteArray& bytes);

/// Whether what was written to the file is on the disk. Only then some systems find out that there
/// is no room for it, that the disk is broken, or that a server does not take it.
[[nodiscard]] bool syncFile(QFileDevice& file);

} // namespace image

#endif
