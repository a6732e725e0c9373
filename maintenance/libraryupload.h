// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_MAINTENANCE_LIBRARYUPLOAD_H
#define MIOLKA_MAINTENANCE_LIBRARYUPLOAD_H

#include "maintenance/libraryfile.h"

#include <QCoreApplication>
#include <QStringList>

#include <optional>

class QWidget;

/// What the user is asked before a sound library or custom messages library goes to the device.
class cMyLibraryUpload
{
    Q_DECLARE_TR_FUNCTIONS(cMyLibraryUpload)

public:
    /// The window is not owned; the questions stand over it.
    explicit cMyLibraryUpload(QWidget& window) : m_window(window) {}

    /// Asks for a file, beginning in the directory, and whether to go on; the lines to be sent, or
    /// nothing if there is nothing to be done. A file that cannot be read is passed over in
    /// silence.
    [[nodiscard]] std::optional<QStringList> choose(const QString& directory) const;

private:
    [[nodiscard]] QString chooseFile(const QString& directory) const;
    [[nodiscard]] bool isConfirmed() const;
    [[nodiscard]] static cMyLibrary read(const QString& path);
    void tellTooLarge() const;

    QWidget& m_window;
};

#endif
