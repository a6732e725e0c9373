// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_SETTINGSFILE_H
#define MIOLKA_IMAGE_SETTINGSFILE_H

#include <QString>

class cMyMemoryArea;

/// Settings files (.mio): the settings image as Intel HEX text.
namespace image {

/// Bytes in the settings image.
constexpr int settingsImageSize = 1024;

/// Data bytes in each record of a settings file.
constexpr unsigned short settingsRecordLength = 16;

/// Applies the records of a settings file to the area, which is not cleared first. Reading ends at
/// the record ":00000001FF", at the first word that is no valid record, or at the end of the file.
/// False, with the area untouched, if there is no such regular file or it cannot be opened.
bool readSettingsFile(const QString& path, cMyMemoryArea& area);

/// Writes the first 1024 bytes of the area as a settings file and clears its modified flag.
/// It is stored as storeFile() does. False, with the modified flag as it was, if anything fails.
bool writeSettingsFile(const QString& path, cMyMemoryArea& area);

} // namespace image

#endif
