// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/miolkastatus.h"

#include "device/replies.h"
#include "ui_miolkastatus.h"

cMyMiolkaStatus::cMyMiolkaStatus(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::cMyMiolkaStatus>())
{
    ui->setupUi(this);
    connect(ui->pushButton, &QPushButton::clicked, this, &QDialog::accept);
    updateStatus();
}

cMyMiolkaStatus::~cMyMiolkaStatus() = default;

void cMyMiolkaStatus::setStatus(unsigned char newStatus)
{
    m_status = newStatus;
    updateStatus();
}

void cMyMiolkaStatus::updateStatus()
{
    const QString ok = tr("OK");
    const QString faulty = tr("Awaria");
    const QString error = tr("Błąd");
    struct Row
    {
        QLabel* label;
        quint8 flag;
        const QString& whenSet;
    };
    const std::initializer_list<Row> faults = {
        {ui->lPresure, device::PressureSensorFault, faulty},
        {ui->lAudio, device::AudioFault, faulty},
        {ui->lFlash, device::FlashFault, faulty},
        {ui->lSettings, device::SettingsError, error},
        {ui->lLibrary, device::LibraryError, error},
        {ui->lMessages, device::MessagesError, error},
        {ui->lFirmware, device::FirmwareError, error},
    };
    const bool works = (m_status & device::Works) != 0;
    ui->lMiolka->setText(works ? tr("Miolka działa") : tr("Miolka nie działa"));
    for (const Row& row : faults) {
        row.label->setText((m_status & row.flag) != 0 ? row.whenSet : ok);
    }
}
