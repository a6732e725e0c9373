// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_FIELDCODEC_H
#define MIOLKA_EDITOR_FIELDCODEC_H

#include "editor/settingslayout.h"

#include <optional>

class cMyMemoryArea;
class cMyTableModel;

/// What a measured value makes of the threshold that it is compared with.
struct cMyThresholdScale
{
    double factor = 0;  ///< stored units for each displayed unit
    QString unit;       ///< with its brackets; empty if nothing is compared
    double minimum = 0; ///< as displayed
    double maximum = 0; ///< as displayed; 0 with minimum 0 if nothing is compared
};

/// Numbers and texts of the settings image, between their bytes and what a person reads. Numbers
/// are little-endian.
namespace editor {

/// The bytes of a field.
[[nodiscard]] QVector<quint8> storedBytes(const cMyMemoryArea& area, const cMySettingsField& field);

/// The number in a field of one or two bytes, in stored units, signed if the field is.
[[nodiscard]] int storedNumber(const cMyMemoryArea& area, const cMySettingsField& field);

/// The text of a field up to its first zero byte or its end.
[[nodiscard]] QString storedText(const cMyMemoryArea& area, const cMySettingsField& field);

/// The bytes of a number in stored units; what does not fit loses its high bits.
[[nodiscard]] QVector<quint8> numberBytes(int number, const cMySettingsField& field);

/// A text as Latin-1 with its terminator. What would leave no room for that is cut off.
[[nodiscard]] QVector<quint8> textBytes(const QString& text, const cMySettingsField& field);

/// How many characters a text field takes.
[[nodiscard]] int textCapacity(const cMySettingsField& field);

/// What a row of a table of measured values says of the threshold.
[[nodiscard]] cMyThresholdScale thresholdScale(const cMyTableModel& values, int row);

/// A unit without the brackets that option tables put around it, which may be missing.
[[nodiscard]] QString plainUnit(const QString& unit);

/// The threshold, as displayed, that a stored number stands for. A scale that does not reach
/// below zero but beyond 32767 stored units (battery level: 100 % is 32768) is read unsigned.
[[nodiscard]] double shownThreshold(int stored, const cMyThresholdScale& scale);

/// How many decimals a number is shown with that is stored times this factor; nothing for a factor
/// that no option table has.
[[nodiscard]] std::optional<int> decimalsOfFactor(double factor);

/// The gravity field for a place: m/s² times 3276.8, truncated. Altitude in metres, latitude in
/// degrees north or south. The device's own approximation, in which pi is 3.14.
[[nodiscard]] int storedGravity(double altitude, double latitude);

/// A dotted version as bytes, one for each part.
[[nodiscard]] QVector<quint8> versionBytes(const QString& version);

} // namespace editor

#endif
