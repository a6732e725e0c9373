// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_DEVICEWORK_H
#define MIOLKA_ENDTOEND_DEVICEWORK_H

#include <QStringList>

#include <optional>

/// What people do with a device, in several steps each. The functions return why it did not come
/// off, and an empty text if it did.
namespace support {

class Session;

/// The actions that need a device and can be tried out.
[[nodiscard]] QStringList deviceActions();

/// Whether everything that needs a device is enabled, or disabled, as asked for.
[[nodiscard]] QString checkDeviceActions(Session& session, bool enabled);

/// Plugs a device in and waits until the program offers it.
[[nodiscard]] QString plugIn(Session& session, int device = 0);

/// Unplugs the only device and closes the error box that tells of it. It must be the only one.
[[nodiscard]] QString unplug(Session& session);

/// Waits until the start page shows a status.
[[nodiscard]] QString waitForStatus(Session& session);

/// Reads or writes, by the name of the action, and waits for the end.
[[nodiscard]] QString transfer(Session& session, const QString& action);

/// Chooses a library file and confirms, until its upload is under way.
[[nodiscard]] QString beginUpload(Session& session, const QString& file);

/// Saves the settings to a new file.
[[nodiscard]] QString saveAs(Session& session, const QString& file);

/// Starts from the default settings and drops what was changed.
[[nodiscard]] QString startAfresh(Session& session);

/// Lines of the trace that went to the device, as they were sent, without line ends. The device's
/// number is needed where the trace tells several ports apart.
[[nodiscard]] QStringList linesToDevice(const QStringList& trace, std::optional<int> device = {});

/// The records that the last #WRITE in the trace was followed by.
[[nodiscard]] QStringList lastWritten(const QStringList& trace);

} // namespace support

#endif
