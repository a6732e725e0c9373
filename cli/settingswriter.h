// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SETTINGSWRITER_H
#define MIOLKA_CLI_SETTINGSWRITER_H

#include "cli/backups.h"
#include "cli/devicememory.h"
#include "cli/differences.h"
#include "cli/outcome.h"
#include "image/memoryarea.h"

class cMyConsole;
class cMyDeviceSession;
struct cMyInvocation;

/// Writes a settings image to one device, with a way back: what the device held is kept in a file
/// before the first byte is written, and what it holds afterwards is read and compared.
///
/// prepare() comes first; nothing is written before write().
class cMySettingsWriter
{
public:
    /// Nothing is owned; the session is open.
    cMySettingsWriter(cMyDeviceSession& session, const cMyInvocation& invocation,
                      cMyConsole& console);

    /// Reads what the device holds. The image, which is not owned, is what it is to hold. NoDevice
    /// if it is a backup of another device and --yes leaves nobody to ask.
    [[nodiscard]] cMyOutcome prepare(const cMyMemoryArea& image);

    /// What writing would change.
    [[nodiscard]] const QVector<cMySettingsDifference>& changes() const { return m_changes; }

    /// Whether there is anything to write. The version stamp alone is not, except for a backup,
    /// which goes back byte for byte.
    [[nodiscard]] bool isNeeded() const;

    /// BadFile, with nothing written, if what the device holds cannot be kept. Protocol, Cancelled
    /// or Mismatch with the command that brings it back, also if nothing was changed; after a
    /// mismatch, of which the first reason and all bytes are told before the question, it is
    /// brought back at once if the user wants that.
    [[nodiscard]] cMyOutcome write();

    /// What the question has to say besides, if the image is a backup of another device by its
    /// file's name; empty if not.
    [[nodiscard]] QString warning() const;

    /// The port and the device's serial number, as in "ttyACM0 1001".
    [[nodiscard]] QString deviceName() const;
    [[nodiscard]] int serialNumber() const { return m_identity.serialNumber; }

    /// Of what the device held; empty before it was kept.
    [[nodiscard]] QString backup() const { return m_backups.path(); }

private:
    [[nodiscard]] cMyOutcome store(const cMyMemoryArea& image,
                                   QVector<cMySettingsDifference>& found);
    [[nodiscard]] cMyOutcome mismatch(const QVector<cMySettingsDifference>& found);
    [[nodiscard]] cMyOutcome withWayBack(cMyOutcome outcome) const;
    [[nodiscard]] QString origin() const;

    cMyDeviceSession& m_session;
    const cMyInvocation& m_invocation;
    cMyConsole& m_console;
    cMyBackups m_backups;
    cMyDeviceIdentity m_identity;
    cMyMemoryArea m_before;
    const cMyMemoryArea* m_image = nullptr;
    QVector<cMySettingsDifference> m_changes;
};

#endif
