// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_REPLIES_H
#define MIOLKA_DEVICE_REPLIES_H

#include "image/memorytype.h"

#include <QStringList>
#include <QVector>

/// Bytes that the device sent in one record.
struct cMyReadRecord
{
    MemoryType area = EEPROM;
    quint16 address = 0;
    QVector<quint8> data;
};

/// What the replies of an exchange say. Replies are lines with their line ends; whatever is neither
/// a memory's word nor a valid record says nothing. Pure functions; any thread may call them.
namespace device {

/// The records in the order in which they came. A record's memory is the one that the device named
/// last; before it named one, EEPROM.
[[nodiscard]] QVector<cMyReadRecord> readRecords(const QStringList& replies);

/// Places in the list of status texts.
enum StatusText {
    SelfTestFlags, ///< a decimal number, see SelfTest
    MaximumDepth,
    DiveTime,
    SerialNumber,
    HardwareVersion,
    MemorySize, ///< in MB, without the unit
    FirmwareVersion,
    VoiceLanguage,
    VoiceVersion,
    SettingsVersion,
    SettingsAuthor,
    SettingsTitle,
    SettingsDescription,
    StatusTextCount
};

/// Bits of the self-test flags. The first says that the device works, the others that something
/// is at fault.
enum SelfTest : quint8 {
    Works = 1U << 0U,
    PressureSensorFault = 1U << 1U,
    AudioFault = 1U << 2U,
    FlashFault = 1U << 3U,
    SettingsError = 1U << 4U,
    LibraryError = 1U << 5U,
    MessagesError = 1U << 6U,
    FirmwareError = 1U << 7U,
};

/// What the device tells of itself.
struct DeviceStatus
{
    quint8 selfTest = 0;  ///< flags, see SelfTest
    int maximumDepth = 0; ///< in cm
    int diveTime = 0;     ///< in s
    int serialNumber = 0;
    QString hardwareVersion; ///< versions are numbers joined by dots
    int memorySize = 0;      ///< in MB
    QString firmwareVersion;
    QString voiceLanguage;
    QString voiceVersion;
    QString settingsVersion;
    QString settingsAuthor;
    QString settingsTitle;
    QString settingsDescription;
};

/// The replies to statusRequest(). Bytes that did not come are 0 in a number and missing in a text
/// or a version.
[[nodiscard]] DeviceStatus readStatus(const QStringList& replies);

/// As the status shows them: metres with a unit, and [hours:]minutes:seconds.
[[nodiscard]] QString depthText(int centimetres);
[[nodiscard]] QString durationText(int seconds);

/// The replies to statusRequest() as texts for display, StatusTextCount of them.
[[nodiscard]] QStringList statusTexts(const QStringList& replies);

} // namespace device

#endif
