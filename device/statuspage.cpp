// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/statuspage.h"

#include "device/replies.h"
#include "pages/labeltext.h"

#include <QLabel>
#include <QPlainTextEdit>

cMyStatusPage::cMyStatusPage(const Fields& fields) : m_fields(fields) {}

quint8 cMyStatusPage::selfTestFlags(const QStringList& texts)
{
    constexpr int lowByte = 0xFF;
    return static_cast<quint8>(texts.value(device::SelfTestFlags).toInt() & lowByte);
}

void cMyStatusPage::showStatus(const QStringList& texts)
{
    const bool works = (selfTestFlags(texts) & device::Works) != 0;
    m_fields.selfTest->setText(works ? tr("Miolka działa") : tr("Miolka nie działa"));
    m_fields.maximumDepth->setText(texts.value(device::MaximumDepth));
    m_fields.diveTime->setText(texts.value(device::DiveTime));
    m_fields.serialNumber->setText(texts.value(device::SerialNumber));
    m_fields.hardwareVersion->setText(texts.value(device::HardwareVersion));
    m_fields.memorySize->setText(texts.value(device::MemorySize) + QStringLiteral(" MB"));
    m_fields.firmwareVersion->setText(pages::labelText(texts.value(device::FirmwareVersion)));
    m_fields.voiceLanguage->setText(pages::labelText(texts.value(device::VoiceLanguage)));
    m_fields.voiceVersion->setText(texts.value(device::VoiceVersion));
    m_fields.settingsVersion->setText(texts.value(device::SettingsVersion));
    m_fields.settingsAuthor->setText(pages::labelText(texts.value(device::SettingsAuthor)));
    m_fields.settingsTitle->setText(pages::labelText(texts.value(device::SettingsTitle)));
    m_fields.settingsDescription->setPlainText(texts.value(device::SettingsDescription));
}

void cMyStatusPage::showPort(const QString& portName)
{
    if (!portName.isEmpty()) {
        m_fields.port->setText(pages::labelText(portName));
        return;
    }
    // The greatest depth and the dive time stay: they are what a diver looks for after a dive.
    const QString unknown = tr("N/D");
    for (QLabel* field : {m_fields.port, m_fields.serialNumber, m_fields.hardwareVersion,
                          m_fields.memorySize, m_fields.selfTest, m_fields.firmwareVersion,
                          m_fields.voiceLanguage, m_fields.voiceVersion, m_fields.settingsVersion,
                          m_fields.settingsAuthor, m_fields.settingsTitle}) {
        field->setText(unknown);
    }
    m_fields.settingsDescription->clear();
}
