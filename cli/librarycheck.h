// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_LIBRARYCHECK_H
#define MIOLKA_CLI_LIBRARYCHECK_H

#include "cli/outcome.h"

#include <QStringList>

/// A library file that the device will take, as far as its records tell.
struct cMyCheckedLibrary
{
    QStringList lines;    ///< as they are to be sent, without line ends
    qint64 bytes = 0;     ///< of all records
    qint64 end = 0;       ///< behind the highest address in flash memory that is written
    int lastWord = 0;     ///< the number of the record that reaches there
    bool hasName = false; ///< a language and a version stand where a sound library has them
    QString language;
    QString version;
};

/// A library is checked before it is sent, as the old one is lost with the first record.
namespace cli {

/// Reads the file and looks at each of its records. BadFile, with the file, the line and the
/// reason, for what the device would not take, and for settings files.
[[nodiscard]] cMyOutcome checkLibrary(const QString& path, cMyCheckedLibrary& library);

/// Whether it fits into so much flash memory; BadFile otherwise.
[[nodiscard]] cMyOutcome checkLibrarySize(const QString& path, const cMyCheckedLibrary& library,
                                          int megabytes);

/// What it is, in a few words, as far as its addresses tell.
[[nodiscard]] QString libraryKind(const cMyCheckedLibrary& library);

} // namespace cli

#endif
