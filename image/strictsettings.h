// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_STRICTSETTINGS_H
#define MIOLKA_IMAGE_STRICTSETTINGS_H

#include "image/settingsfile.h"

#include <QStringList>
#include <QVector>

#include <array>
#include <bitset>

/// What is wrong with a settings file.
struct cMySettingsFault
{
    qint64 line = 0; ///< of the text, counted from 1; 0 if it is the whole file
    QString reason;  ///< in the middle of a sentence; may hold what the file holds
};

/// A settings file as it was read without leniency.
struct cMyStrictSettings
{
    std::array<quint8, image::settingsImageSize> bytes{};
    std::bitset<image::settingsImageSize> isGiven; ///< the bytes that records of the file give
    QVector<cMySettingsFault> faults;              ///< the first ones, image::mostNamedFaults
    qint64 faultCount = 0;                         ///< of all
};

/// Settings files for those who must not take one half: every fault is named, with its place.
namespace image {

/// More than a settings file has lines, even with one byte in each.
constexpr int mostNamedFaults = 2000;

/// Reads a settings file and all of its faults: whatever is no record of the public Intel HEX
/// format, or nothing that settings have, or would be read otherwise by readSettingsFile(). If
/// there are none, readSettingsFile() gives an area the same bytes. Needs no more memory for large
/// files than for small ones.
[[nodiscard]] cMyStrictSettings readStrictSettings(const QString& path);

/// A line for each named fault, "settings.mio:17: checksum 3A, expected 3B", and one that says how
/// many there are beyond them.
[[nodiscard]] QStringList faultLines(const QString& path, const cMyStrictSettings& settings);

} // namespace image

#endif
