// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_STATEFILE_H
#define MIOLKA_EMULATOR_STATEFILE_H

#include "emulator/devicememories.h"

#include <QString>
#include <QVector>

#include <optional>

/// What virtual devices remember from one run to the next: one file for all of them.
///
/// The file holds a magic word, a version, and every memory as runs of equal bytes and of others,
/// so that the erased flash takes no room; a digest of all that stands at its end.
namespace emulator {

/// Devices that there can be in one run, and in one file.
constexpr int mostDevices = 16;

/// Replaces the file in one step; false, with the old one left, if that fails.
[[nodiscard]] bool writeState(const QString& path, const QVector<cMyDeviceMemories>& devices);

/// Whether the file can be made or replaced: its directory is there and takes files. Leaves the
/// file as it is.
[[nodiscard]] bool canWriteState(const QString& path);

/// Nothing if the file is not readable, or not wholly as writeState() writes it. Whatever it
/// holds, memory is bounded by what mostDevices need, with the file and a copy of it meanwhile.
[[nodiscard]] std::optional<QVector<cMyDeviceMemories>> readState(const QString& path);

} // namespace emulator

#endif
