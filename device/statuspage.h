// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_STATUSPAGE_H
#define MIOLKA_DEVICE_STATUSPAGE_H

#include <QCoreApplication>
#include <QStringList>

class QLabel;
class QPlainTextEdit;

/// What the start page shows of the device.
class cMyStatusPage
{
    Q_DECLARE_TR_FUNCTIONS(cMyStatusPage)

public:
    /// Where it is shown. None of these is owned.
    struct Fields
    {
        QLabel* selfTest;
        QLabel* port;
        QLabel* memorySize;
        QLabel* serialNumber;
        QLabel* hardwareVersion;
        QLabel* firmwareVersion;
        QLabel* voiceVersion;
        QLabel* voiceLanguage;
        QLabel* settingsVersion;
        QLabel* settingsAuthor;
        QLabel* settingsTitle;
        QPlainTextEdit* settingsDescription;
        QLabel* maximumDepth;
        QLabel* diveTime;
    };

    /// The widgets outlive it. They show nothing until they are told.
    explicit cMyStatusPage(const Fields& fields);

    /// Shows a list of device::statusTexts(). A shorter list shows what it has.
    void showStatus(const QStringList& texts);

    /// Shows which port the device is at. An empty name means that there is none: nothing is known
    /// of the device then but its last dive.
    void showPort(const QString& portName);

    /// The self-test flags in such a list.
    [[nodiscard]] static quint8 selfTestFlags(const QStringList& texts);

private:
    Fields m_fields;
};

#endif
