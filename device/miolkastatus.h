// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_MIOLKASTATUS_H
#define MIOLKA_DEVICE_MIOLKASTATUS_H

#include <QDialog>

#include <memory>

namespace Ui {
class cMyMiolkaStatus;
}

/// Shows what the device found out about itself, one line for each self-test.
class cMyMiolkaStatus : public QDialog
{
    Q_OBJECT

public:
    explicit cMyMiolkaStatus(QWidget* parent);
    ~cMyMiolkaStatus() override;

public slots:
    /// Takes the flags of device::SelfTest.
    void setStatus(unsigned char newStatus);

    /// Shows the flags that were set last; before any were, those of a device that does not work.
    void updateStatus();

private:
    std::unique_ptr<Ui::cMyMiolkaStatus> ui;
    quint8 m_status = 0;
};

#endif
