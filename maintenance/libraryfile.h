// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_MAINTENANCE_LIBRARYFILE_H
#define MIOLKA_MAINTENANCE_LIBRARYFILE_H

#include <QStringList>

/// Why a library file was not read.
enum class LibraryFault {
    None,
    Unreadable, ///< there is no such regular file, or it cannot be opened or read to its end
    TooLarge,   ///< beyond maintenance::largestLibraryFile or mostLibraryLines
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

/// In bytes: text for some 45 MB of flash memory, several times what a device has.
constexpr qint64 largestLibraryFile = 128LL * 1024 * 1024;

/// Eight times what fills 8 MB in records of 16 bytes. A line takes up to 300 bytes of memory until
/// it was sent and answered.
constexpr int mostLibraryLines = 4'000'000;

/// The words of a library file in their order, up to and with the record ":00000001FF", or all of
/// them where that is missing. They are not looked at any further: what is no record is kept as it
/// stands, byte for byte as Latin-1. A word longer than any record is cut to image::maxRecordText
/// characters.
[[nodiscard]] cMyLibrary readLibraryFile(const QString& path);

} // namespace maintenance

#endif
