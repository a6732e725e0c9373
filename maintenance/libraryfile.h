// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_MAINTENANCE_LIBRARYFILE_H
#define MIOLKA_MAINTENANCE_LIBRARYFILE_H

#include <QStringList>

/// Why a library file was not read.
enum class LibraryFault {
    None,
    Unreadable, ///< there is no such regular file, or it cannot be opened
    TooLarge,   ///< larger than maintenance::largestLibraryFile
};

/// What a library file holds for the device, as it is to be sent.
struct cMyLibrary
{
    LibraryFault fault = LibraryFault::None;
    QStringList lines; ///< without line ends; empty if nothing was read
};

/// Sound libraries (.mia) and custom messages libraries (.mic): Intel HEX text for the device's
/// flash memory. Which of the two a file is, only the addresses in its records say.
namespace maintenance {

/// In bytes: text for some 95 MB of flash memory, many times what a device has. As a list of lines it
/// takes about six times that.
constexpr qint64 largestLibraryFile = 256LL * 1024 * 1024;

/// The words of a library file in their order, up to and with the record ":00000001FF", or all of
/// them where that is missing. They are not looked at any further: what is no record is kept as it
/// stands, byte for byte as Latin-1. A word longer than any record is cut to image::maxRecordText
/// characters.
[[nodiscard]] cMyLibrary readLibraryFile(const QString& path);

} // namespace maintenance

#endif
