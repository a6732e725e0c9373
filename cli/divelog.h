// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DIVELOG_H
#define MIOLKA_CLI_DIVELOG_H

#include "cli/diveprofile.h"
#include "cli/outcome.h"

#include <QByteArray>
#include <QStringList>

/// A profile, and what it was taken from.
struct cMyDiveLog
{
    QString name; ///< of the built-in profile, or of the file without its directory
    cMyDiveProfile profile;
    int dive = 1;                ///< which of the file's dives it is, counted from 1
    int dives = 1;               ///< in the file
    int strangeTemperatures = 0; ///< in the dive that no water has, and that were left out
};

/// Where dive profiles come from. Errors are of the status BadFile, in the form "FILE:LINE: what";
/// to ask for a second dive where there is never one is Usage, and Ctrl-C is Cancelled.
namespace cli {

/// Bytes in the longest file that is read.
constexpr qint64 longestDiveLog = qint64{64} * 1024 * 1024;

/// A built-in profile by its name, or a file; dive counts from 1. Log is to be used only if this is
/// done.
[[nodiscard]] cMyOutcome readDiveLog(const QString& profile, int dive, cMyDiveLog& log);

/// The contents of a file: a table of seconds and metres, or XML as of Subsurface or in the UDDF.
[[nodiscard]] cMyOutcome parseDiveLog(const QByteArray& contents, const QString& file, int dive,
                                      cMyDiveLog& log);

/// A table: on each line seconds and metres, parted by a comma, a semicolon or a tab. Where it is
/// no comma, numbers may have decimal commas. They may be in quotes, with empty cells behind them.
/// The first line may be a heading; empty lines, and what follows "#", are skipped.
[[nodiscard]] cMyOutcome parseDiveTable(const QByteArray& contents, const QString& file,
                                        cMyDiveProfile& profile);

/// A log of dives as Subsurface writes it, or in the Universal Dive Data Format.
[[nodiscard]] cMyOutcome parseDiveXml(const QByteArray& contents, const QString& file, int dive,
                                      cMyDiveLog& log);

/// The names of the built-in profiles.
[[nodiscard]] QStringList builtInProfiles();

/// The built-in profile of that name; without points if there is none.
[[nodiscard]] cMyDiveProfile builtInProfile(const QString& name);

} // namespace cli

#endif
