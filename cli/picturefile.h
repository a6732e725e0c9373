// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PICTUREFILE_H
#define MIOLKA_CLI_PICTUREFILE_H

#include "cli/outcome.h"

class cMyBackups;

/// A file that a picture is to be stored in, as SVG or, by its suffix, made into a PNG by
/// rsvg-convert.
class cMyPictureFile
{
public:
    /// By its path as the user gave it. Nothing is looked at before check().
    explicit cMyPictureFile(QString path) : m_path(std::move(path)) {}

    /// Whether store() has a chance: Usage if the suffix is none of a picture, BadFile if the file
    /// is there and must not be written over, or if what makes a PNG is not installed.
    [[nodiscard]] cMyOutcome check(bool mayReplace) const;

    /// Stores a picture in SVG, in one step; what was there is kept first. BadFile if it cannot be.
    [[nodiscard]] cMyOutcome store(const QByteArray& svg, cMyBackups& backups) const;

private:
    [[nodiscard]] bool isPng() const;
    [[nodiscard]] cMyOutcome failure(const QString& why) const;
    [[nodiscard]] cMyOutcome makePng(const QByteArray& svg, QByteArray& png) const;

    QString m_path;
};

#endif
