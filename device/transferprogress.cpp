// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/transferprogress.h"

#include <QProgressDialog>

cMyTransferProgress::cMyTransferProgress(QWidget& window) : QObject(&window), m_window(window) {}

void cMyTransferProgress::open(const QString& label)
{
    constexpr int initialMaximum = 100;
    drop();
    m_dialog = new QProgressDialog(label, tr("Anuluj"), 0, initialMaximum, &m_window);
    m_dialog->setWindowTitle(QStringLiteral("Miolka"));
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setAutoReset(true);
    m_dialog->setAutoClose(true);
    m_dialog->setMinimumDuration(0);
    connect(m_dialog, &QProgressDialog::canceled, this, &cMyTransferProgress::canceled);
    m_dialog->show(); // left to itself it waits for the first progress
}

void cMyTransferProgress::show(int min, int max, int progress)
{
    // A value would bring back a dialog that was cancelled.
    if (m_dialog == nullptr || !m_dialog->isVisible()) {
        return;
    }
    if (progress == max) {
        // Showing the end lets the user in once more; there is nothing left to cancel then.
        m_dialog->disconnect(this);
    }
    m_dialog->setMinimum(min);
    m_dialog->setMaximum(max);
    m_dialog->setValue(progress);
}

void cMyTransferProgress::drop()
{
    if (m_dialog != nullptr) {
        m_dialog->disconnect(this);
        m_dialog->reset();
        m_dialog->hide();
        m_dialog->deleteLater();
        m_dialog = nullptr;
    }
}
