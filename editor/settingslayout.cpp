// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settingslayout.h"

#include <string_view>

namespace {

using namespace std::string_view_literals;

/// A row of the table as it is written down here. Texts and plain bytes give their default as
/// defaultText, which is padded with zeros; numbers as stored.
struct Row
{
    const char* name;
    int address;
    int width;
    FieldEncoding encoding;
    double factor;
    double minimum;
    double maximum;
    int defaultNumber;
    const char* unit;
    const char* optionTable;
    std::string_view defaultText;
};

constexpr auto Unsigned = FieldEncoding::Unsigned;
constexpr auto Signed = FieldEncoding::Signed;
constexpr auto Text = FieldEncoding::Text;
constexpr auto Bytes = FieldEncoding::Bytes;

// clang-format off
constexpr Row beforeRules[] = {
    {"programVersion",       0,  4, Bytes,    1, 0, 0, 0, "", "", "\x01\x00\x01\x00"sv},
    {"author",              16, 16, Text,     1, 0, 0, 0, "", "", ""sv},
    {"title",               32, 32, Text,     1, 0, 0, 0, "", "", "\0N 13319 v1.5"sv},
    {"depthSamplingRate",  128,  1, Unsigned, 1, 0, 255, 150, "", "parCb1", {}},
    {"volume",             129,  1, Signed,   1, -57, 6, -5, "dB", "", {}},
    {"suspendDelay",       130,  2, Unsigned, 1, 0, 65535, 3600, "", "parCb2", {}},
    {"suspendSampling",    132,  1, Unsigned, 1, 0, 255, 6, "", "parCb3", {}},
    {"diveThreshold",      136,  1, Unsigned, 1, 5, 255, 100, "cm", "", {}},
    {"surfacingThreshold", 138,  1, Unsigned, 1, 5, 250, 50, "cm", "", {}},
    {"ascentThreshold",    144,  2, Signed,   1, -200, 0, -50, "cm/s", "", {}},
    {"bottomThreshold",    146,  2, Signed,   1, -100, 100, -10, "cm/s", "", {}},
    {"salinity",           152,  1, Unsigned, 1, 0, 100, 0, "\u2030", "", {}},
    {"temperatureSource",  154,  1, Unsigned, 1, 0, 255, 1, "", "parCb4", {}},
    {"fixedTemperature",   156,  2, Signed,   10, 0, 60, 0, "\u00B0C", "", {}},
    {"gravity",            158,  2, Unsigned, 3276.8, 0, 19.99, 32132, "m/s\u00B2", "", {}},
    {"altitude",           220,  2, Signed,   1, -1000, 10000, 0, "m", "", {}},
    {"latitude",           222,  1, Unsigned, 1, 0, 90, 45, "\u00B0", "", {}},
    {"periodA",            240,  1, Unsigned, 1, 1, 240, 3, "s", "", {}},
    {"periodB",            241,  1, Unsigned, 1, 1, 240, 5, "s", "", {}},
    {"periodC",            242,  1, Unsigned, 1, 1, 240, 15, "s", "", {}},
    {"periodD",            243,  1, Unsigned, 1, 1, 240, 30, "s", "", {}},
    {"distanceE",          248,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
    {"distanceF",          250,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
    {"distanceG",          252,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
    {"distanceH",          254,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
};

// Members of one rule; their addresses count from its first byte. The factor, unit and range of a
// threshold are those of the measured value that the rule compares.
constexpr Row timerRule[] = {
    {"condition",     0, 1, Unsigned, 1, 0, 255, 254, "", "timCb1", {}},
    {"measuredValue", 1, 1, Unsigned, 1, 0, 255, 255, "", "timCb2", {}},
    {"comparison",    2, 1, Unsigned, 1, 0, 255, 0, "", "timCb3", {}},
    {"threshold",     3, 2, Signed,   1, -32768, 32767, 0, "", "", {}},
    {"action",        5, 1, Unsigned, 1, 0, 255, 127, "", "timCb4", {}},
    {"time",          6, 2, Unsigned, 1, 0, 65535, 0, "s", "", {}},
};

constexpr Row messageRule[] = {
    {"condition",     0, 1, Unsigned, 1, 0, 255, 254, "", "msgCb1", {}},
    {"measuredValue", 1, 1, Unsigned, 1, 0, 255, 255, "", "msgCb2", {}},
    {"comparison",    2, 1, Unsigned, 1, 0, 255, 0, "", "msgCb3", {}},
    {"threshold",     3, 2, Signed,   1, -32768, 32767, 0, "", "", {}},
    {"message",       5, 1, Unsigned, 1, 0, 255, 127, "", "msgCb4", {}},
    {"form",          6, 1, Unsigned, 1, 0, 255, 0, "", "msgCb5", {}},
    {"repetition",    7, 1, Unsigned, 1, 0, 255, 0, "", "msgCb6", {}},
};

constexpr Row afterRules[] = {
    {"description", 512, 512, Text, 1, 0, 0, 0, "", "",
     "\0astawy spelniajace wymagania normy EN 13319:2000\nver. 1.5"sv},
};
// clang-format on

constexpr int ruleSize = 8;
constexpr int timerRuleCount = 8;
constexpr int timerRuleAddress = 256;
constexpr int messageRuleCount = 24;
constexpr int messageRuleAddress = 320;

QByteArray defaultBytesOf(const Row& row)
{
    QByteArray bytes(row.width, '\0');
    if (row.encoding == Text || row.encoding == Bytes) {
        return bytes.replace(0, static_cast<int>(row.defaultText.size()), row.defaultText.data(),
                             static_cast<int>(row.defaultText.size()));
    }
    for (int i = 0; i < row.width; ++i) {
        bytes[i] = static_cast<char>(row.defaultNumber >> (8 * i));
    }
    return bytes;
}

template <std::size_t RowCount>
void appendRows(QVector<cMySettingsField>& fields, const Row (&rows)[RowCount],
                const QString& prefix, int base)
{
    for (const Row& row : rows) {
        cMySettingsField field;
        field.name = prefix + QString::fromLatin1(row.name);
        field.address = base + row.address;
        field.width = row.width;
        field.encoding = row.encoding;
        field.factor = row.factor;
        field.minimum = row.minimum;
        field.maximum = row.maximum;
        field.defaultBytes = defaultBytesOf(row);
        field.unit = QString::fromUtf8(row.unit);
        field.optionTable = QString::fromLatin1(row.optionTable);
        fields.append(field);
    }
}

template <std::size_t RowCount>
void appendRules(QVector<cMySettingsField>& fields, const Row (&members)[RowCount],
                 const char* name, int address, int count)
{
    for (int rule = 0; rule < count; ++rule) {
        const QString prefix = QStringLiteral("%1%2.")
                                   .arg(QString::fromLatin1(name))
                                   .arg(rule + 1, 2, 10, QLatin1Char('0'));
        appendRows(fields, members, prefix, address + ruleSize * rule);
    }
}

QVector<cMySettingsField> buildFields()
{
    QVector<cMySettingsField> fields;
    appendRows(fields, beforeRules, QString(), 0);
    appendRules(fields, timerRule, "timerRule", timerRuleAddress, timerRuleCount);
    appendRules(fields, messageRule, "messageRule", messageRuleAddress, messageRuleCount);
    appendRows(fields, afterRules, QString(), 0);
    return fields;
}

} // namespace

namespace editor {

const QVector<cMySettingsField>& settingsFields()
{
    static const QVector<cMySettingsField> fields = buildFields();
    return fields;
}

} // namespace editor
