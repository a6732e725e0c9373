// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settingslayout.h"

#include <QCoreApplication>
#include <QHash>

#include <string_view>

namespace {

using namespace std::string_view_literals;

/// A row of the table as it is written down here. Texts and plain bytes give their default as
/// defaultText, which is padded with zeros; numbers as stored.
struct Row
{
    const char* name;
    const char* caption;
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
    {"programVersion", QT_TRANSLATE_NOOP("cMySettingsField", "Wersja programu"),
     0,  4, Bytes,    1, 0, 0, 0, "", "", "\x01\x00\x01\x00"sv},
    {"author", QT_TRANSLATE_NOOP("cMySettingsField", "Autor"),
     16, 16, Text,     1, 0, 0, 0, "", "", ""sv},
    {"title", QT_TRANSLATE_NOOP("cMySettingsField", "Tytuł"),
     32, 32, Text,     1, 0, 0, 0, "", "", "\0N 13319 v1.5"sv},
    {"depthSamplingRate", QT_TRANSLATE_NOOP("cMySettingsField", "2. Częstotliwość próbkowania głębokości"),
     128,  1, Unsigned, 1, 0, 255, 150, "", "parCb1", {}},
    {"volume", QT_TRANSLATE_NOOP("cMySettingsField", "1. Głośność"),
     129,  1, Signed,   1, -57, 6, -5, "dB", "", {}},
    {"suspendDelay", QT_TRANSLATE_NOOP("cMySettingsField", "3. Czas przejścia w tryb uśpienia po wynurzeniu"),
     130,  2, Unsigned, 1, 0, 65535, 3600, "", "parCb2", {}},
    {"suspendSampling", QT_TRANSLATE_NOOP("cMySettingsField", "4. Okres próbkowania głębokości w trybie uśpienia"),
     132,  1, Unsigned, 1, 0, 255, 6, "", "parCb3", {}},
    {"diveThreshold", QT_TRANSLATE_NOOP("cMySettingsField", "5. Próg zanurzenia"),
     136,  1, Unsigned, 1, 5, 255, 100, "cm", "", {}},
    {"surfacingThreshold", QT_TRANSLATE_NOOP("cMySettingsField", "6. Próg wynurzenia"),
     138,  1, Unsigned, 1, 5, 250, 50, "cm", "", {}},
    {"ascentThreshold", QT_TRANSLATE_NOOP("cMySettingsField", "7. Próg rozpoczęcia wynurzania"),
     144,  2, Signed,   1, -200, 0, -50, "cm/s", "", {}},
    {"bottomThreshold", QT_TRANSLATE_NOOP("cMySettingsField", "8. Próg rozpoczęcia pobytu na dnie"),
     146,  2, Signed,   1, -100, 100, -10, "cm/s", "", {}},
    {"salinity", QT_TRANSLATE_NOOP("cMySettingsField", "9. Zasolenie wody"),
     152,  1, Unsigned, 1, 0, 100, 0, "\u2030", "", {}},
    {"temperatureSource", QT_TRANSLATE_NOOP("cMySettingsField", "10. Żródło temperatury do wyliczenia gęstości wody"),
     154,  1, Unsigned, 1, 0, 255, 1, "", "parCb4", {}},
    {"fixedTemperature", QT_TRANSLATE_NOOP("cMySettingsField", "11. Stała temperatura do wyliczenia gęstości wody"),
     156,  2, Signed,   10, 0, 60, 0, "\u00B0C", "", {}},
    {"gravity", QT_TRANSLATE_NOOP("cMySettingsField", "Przyspieszenie ziemskie"),
     158,  2, Unsigned, 3276.8, 0, 19.99, 32132, "m/s\u00B2", "", {}},
    {"altitude", QT_TRANSLATE_NOOP("cMySettingsField", "12. Wysokość n.p.m."),
     220,  2, Signed,   1, -1000, 10000, 0, "m", "", {}},
    {"latitude", QT_TRANSLATE_NOOP("cMySettingsField", "13. Szerokość geograficzna"),
     222,  1, Unsigned, 1, 0, 90, 45, "\u00B0", "", {}},
    {"periodA", QT_TRANSLATE_NOOP("cMySettingsField", "Okres A"),
     240,  1, Unsigned, 1, 1, 240, 3, "s", "", {}},
    {"periodB", QT_TRANSLATE_NOOP("cMySettingsField", "Okres B"),
     241,  1, Unsigned, 1, 1, 240, 5, "s", "", {}},
    {"periodC", QT_TRANSLATE_NOOP("cMySettingsField", "Okres C"),
     242,  1, Unsigned, 1, 1, 240, 15, "s", "", {}},
    {"periodD", QT_TRANSLATE_NOOP("cMySettingsField", "Okres D"),
     243,  1, Unsigned, 1, 1, 240, 30, "s", "", {}},
    {"distanceE", QT_TRANSLATE_NOOP("cMySettingsField", "Dystans E"),
     248,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
    {"distanceF", QT_TRANSLATE_NOOP("cMySettingsField", "Dystans F"),
     250,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
    {"distanceG", QT_TRANSLATE_NOOP("cMySettingsField", "Dystans G"),
     252,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
    {"distanceH", QT_TRANSLATE_NOOP("cMySettingsField", "Dystans H"),
     254,  2, Signed,   100, 0, 99.99, 0, "m", "", {}},
};

// Members of one rule; their addresses count from its first byte. The factor, unit and range of a
// threshold are those of the measured value that the rule compares.
constexpr Row timerRule[] = {
    {"condition", QT_TRANSLATE_NOOP("cMySettingsField", "Kiedy"),
     0, 1, Unsigned, 1, 0, 255, editor::conditionNever, "", "timCb1", {}},
    {"measuredValue", QT_TRANSLATE_NOOP("cMySettingsField", "Wartość"),
     1, 1, Unsigned, 1, 0, 255, 255, "", "timCb2", {}},
    {"comparison", QT_TRANSLATE_NOOP("cMySettingsField", "Porównanie"),
     2, 1, Unsigned, 1, 0, 255, 0, "", "timCb3", {}},
    {"threshold", QT_TRANSLATE_NOOP("cMySettingsField", "Próg"),
     3, 2, Signed,   1, -32768, 32767, 0, "", "", {}},
    {"action", QT_TRANSLATE_NOOP("cMySettingsField", "Akcja"),
     5, 1, Unsigned, 1, 0, 255, 127, "", "timCb4", {}},
    {"time", QT_TRANSLATE_NOOP("cMySettingsField", "Czas"),
     6, 2, Unsigned, 1, 0, 65535, 0, "s", "", {}},
};

constexpr Row messageRule[] = {
    {"condition", QT_TRANSLATE_NOOP("cMySettingsField", "Kiedy"),
     0, 1, Unsigned, 1, 0, 255, editor::conditionNever, "", "msgCb1", {}},
    {"measuredValue", QT_TRANSLATE_NOOP("cMySettingsField", "Wartość"),
     1, 1, Unsigned, 1, 0, 255, 255, "", "msgCb2", {}},
    {"comparison", QT_TRANSLATE_NOOP("cMySettingsField", "Porównanie"),
     2, 1, Unsigned, 1, 0, 255, 0, "", "msgCb3", {}},
    {"threshold", QT_TRANSLATE_NOOP("cMySettingsField", "Próg"),
     3, 2, Signed,   1, -32768, 32767, 0, "", "", {}},
    {"message", QT_TRANSLATE_NOOP("cMySettingsField", "Komunikat"),
     5, 1, Unsigned, 1, 0, 255, 127, "", "msgCb4", {}},
    {"form", QT_TRANSLATE_NOOP("cMySettingsField", "Forma"),
     6, 1, Unsigned, 1, 0, 255, 0, "", "msgCb5", {}},
    {"repetition", QT_TRANSLATE_NOOP("cMySettingsField", "Powtarzanie"),
     7, 1, Unsigned, 1, 0, 255, 0, "", "msgCb6", {}},
};

constexpr Row afterRules[] = {
    {"description", QT_TRANSLATE_NOOP("cMySettingsField", "Opis"),
     512, 512, Text, 1, 0, 0, 0, "", "",
     "\0astawy spelniajace wymagania normy EN 13319:2000\nver. 1.5"sv},
};
// clang-format on

constexpr int ruleSize = 8;
constexpr int timerRuleAddress = 256;
constexpr int messageRuleAddress = 320;

QByteArray defaultBytesOf(const Row& row)
{
    if (row.encoding == Text || row.encoding == Bytes) {
        // One that is too long stays so, for the tests of the table to see.
        return QByteArray(row.defaultText.data(), static_cast<int>(row.defaultText.size()))
            .leftJustified(row.width, '\0');
    }
    QByteArray bytes(row.width, '\0');
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
        field.captionKey = row.caption;
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
        const QString prefix = editor::ruleMember(QString::fromLatin1(name), rule + 1, QString());
        appendRows(fields, members, prefix, address + ruleSize * rule);
    }
}

QVector<cMySettingsField> buildFields()
{
    QVector<cMySettingsField> fields;
    appendRows(fields, beforeRules, QString(), 0);
    appendRules(fields, timerRule, "timerRule", timerRuleAddress, editor::timerRuleCount);
    appendRules(fields, messageRule, "messageRule", messageRuleAddress, editor::messageRuleCount);
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

const cMySettingsField& settingsField(const QString& name)
{
    static const QHash<QString, int> index = [] {
        QHash<QString, int> rows;
        for (int row = 0; row < settingsFields().size(); ++row) {
            rows.insert(settingsFields().at(row).name, row);
        }
        return rows;
    }();
    const auto found = index.constFind(name);
    if (found == index.constEnd()) {
        qFatal("the settings image has no field %s", qPrintable(name));
    }
    return settingsFields().at(*found);
}

QString ruleMember(const QString& kind, int rule, const QString& member)
{
    return QStringLiteral("%1%2.%3").arg(kind).arg(rule, 2, 10, QLatin1Char('0')).arg(member);
}

QString optionTableFile(const cMySettingsField& field)
{
    return optionTableFile(field.optionTable);
}

QString optionTableFile(const QString& optionTable)
{
    return QStringLiteral(":/models/%1.csv").arg(optionTable);
}

QString caption(const cMySettingsField& field)
{
    return QCoreApplication::translate("cMySettingsField", field.captionKey);
}

} // namespace editor
