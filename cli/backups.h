// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_BACKUPS_H
#define MIOLKA_CLI_BACKUPS_H

#include "cli/outcome.h"

class cMyMemoryArea;
struct cMyInvocation;

/// What is about to be written over, kept in files that say in their names when and whose it was.
/// No file that is there is ever written over.
class cMyBackups
{
public:
    /// In the directory that --backup-dir names, or the user's data directory.
    explicit cMyBackups(const cMyInvocation& invocation);

    /// Keeps a whole settings image, byte for byte; origin becomes a part of the file's name. The
    /// file is on the disk when this returns. BadFile if it cannot be.
    [[nodiscard]] cMyOutcome keepImage(const cMyMemoryArea& image, const QString& origin);

    /// Keeps a copy of a file, byte for byte. Nothing if there is no such file.
    [[nodiscard]] cMyOutcome keepFile(const QString& path);

    /// Of the last backup; empty if there is none.
    [[nodiscard]] QString path() const { return m_path; }

private:
    [[nodiscard]] cMyOutcome store(const QByteArray& text, const QString& origin,
                                   const QString& suffix);

    QString m_directory;
    QString m_path;
};

#endif
