// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_SETTINGSLAYOUT_H
#define MIOLKA_EDITOR_SETTINGSLAYOUT_H

#include <QByteArray>
#include <QString>
#include <QVector>

/// How a field's bytes are read. Numbers are little-endian.
enum class FieldEncoding {
    Unsigned, ///< unsigned integer: displayed value times factor
    Signed,   ///< two's complement integer: displayed value times factor
    Text,     ///< Latin-1, ended by a zero byte
    Bytes,    ///< single unsigned bytes
};

/// One field of the settings image.
struct cMySettingsField
{
    QString name;                ///< unique; members of rules read "messageRule07.threshold"
    const char* captionKey = ""; ///< source text of the caption, see editor::caption()
    int address = 0;             ///< of the first byte, 0 to 1023
    int width = 0;               ///< in bytes
    FieldEncoding encoding = FieldEncoding::Unsigned;
    double factor = 1;       ///< stored units for each displayed unit
    double minimum = 0;      ///< least displayed value of a number
    double maximum = 0;      ///< greatest displayed value of a number
    QByteArray defaultBytes; ///< what the built-in default settings hold, width bytes
    QString unit;            ///< as displayed, without brackets; empty if there is none
    QString optionTable;     ///< base name of the table of offered values; empty if there is none
};

/// The one table that says what the settings image holds.
namespace editor {

constexpr int timerRuleCount = 8;
constexpr int messageRuleCount = 24;

/// The condition of a rule that is switched off.
constexpr int conditionNever = 254;

/// Every field in the order of its address. Bytes of the image that no field covers belong to the
/// device and are kept as they are.
[[nodiscard]] const QVector<cMySettingsField>& settingsFields();

/// The field of that name. A name that does not exist is a fault of the program and ends it.
[[nodiscard]] const cMySettingsField& settingsField(const QString& name);

/// Name of a member of a rule: kind is "timerRule" or "messageRule", rules count from 1.
[[nodiscard]] QString ruleMember(const QString& kind, int rule, const QString& member);

/// Where among the resources the table of the values lies that are offered for the field, and where
/// the option table with this base name lies.
[[nodiscard]] QString optionTableFile(const cMySettingsField& field);
[[nodiscard]] QString optionTableFile(const QString& optionTable);

/// What the field is called on the screen, in the language of the installed catalogue.
[[nodiscard]] QString caption(const cMySettingsField& field);

} // namespace editor

#endif
