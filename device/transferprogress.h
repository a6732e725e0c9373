// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_TRANSFERPROGRESS_H
#define MIOLKA_DEVICE_TRANSFERPROGRESS_H

#include <QObject>
#include <QPointer>

class QProgressDialog;
class QWidget;

/// The progress dialog of a transfer. It locks its window from the moment it is opened, so that no
/// second transfer can be asked for, and goes when the last line was answered.
class cMyTransferProgress : public QObject
{
    Q_OBJECT

public:
    /// The window is not owned and is this object's parent.
    explicit cMyTransferProgress(QWidget& window);

    /// Shows a new dialog in place of the one of the last transfer.
    void open(const QString& label);

    /// Range and value; nothing if the dialog was cancelled or closed.
    void show(int min, int max, int progress);

    /// Takes the dialog away without cancelling anything.
    void drop();

signals:
    /// The user wants the transfer to end.
    void canceled();

private:
    QWidget& m_window;
    QPointer<QProgressDialog> m_dialog; ///< deletes itself when it is closed
};

#endif
