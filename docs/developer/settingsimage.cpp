// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/developer/settingsimage.h"

#include "docs/developer/unusedbytes.h"
#include "docs/manual/fieldfacts.h"
#include "docs/manual/layoutfacts.h"
#include "docs/manual/markdown.h"
#include "docs/manual/optiontables.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <algorithm>
#include <numeric>

namespace {

using manual::Column;
using manual::hexadecimal;
using manual::literal;

const QString nothing = QStringLiteral("–");

QString code(const QString& text)
{
    return QLatin1Char('`') + text + QLatin1Char('`');
}

QString place(int address)
{
    return QStringLiteral("%1 (%2)").arg(address).arg(hexadecimal(address));
}

QVector<quint8> defaultFile(int address, int size)
{
    cMyMemoryArea image;
    image::readSettingsFile(QStringLiteral(":/pliki/clear.mio"), image);
    return image.data(address, static_cast<unsigned short>(size));
}

/// The bytes of the default, with the zeros at its end left out of a text.
QString storedDefault(const cMySettingsField& field)
{
    QVector<quint8> bytes(field.defaultBytes.cbegin(), field.defaultBytes.cend());
    if (field.encoding != FieldEncoding::Text) {
        return code(editor::hexadecimal(bytes));
    }
    const auto isZero = [](quint8 byte) {
        return byte == 0;
    };
    if (std::all_of(bytes.cbegin(), bytes.cend(), isZero)) {
        return QStringLiteral("zeros");
    }
    return QStringLiteral("%1 and text that it hides")
        .arg(code(editor::hexadecimal({bytes.first()})));
}

QString options(const cMySettingsField& field)
{
    return field.optionTable.isEmpty()
               ? nothing
               : QStringLiteral("[%1](#%2)")
                     .arg(code(field.optionTable), field.optionTable.toLower());
}

QStringList cells(const cMySettingsField& field, const QString& name)
{
    return {QString::number(field.width),
            code(name),
            literal(manual::plainCaption(field)),
            manual::encodingName(field),
            manual::factorText(field),
            manual::rangeText(field),
            field.unit.isEmpty() ? nothing : literal(field.unit),
            literal(manual::defaultValue(field)),
            storedDefault(field),
            options(field)};
}

QVector<Column> columns(const char* place)
{
    constexpr int share = 9;
    QVector<Column> all;
    for (const char* heading : {place, "Bytes", "Name", "Caption", "Encoding", "Factor", "Range",
                                "Unit", "Default", "Default bytes", "Options"}) {
        all.append({QString::fromLatin1(heading), share});
    }
    return all;
}

QString fieldTable()
{
    QVector<QStringList> rows;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!editor::isRuleMember(field)) {
            rows.append(QStringList(place(field.address)) + cells(field, field.name));
        }
    }
    return manual::table(columns("Address"), rows);
}

QString ruleAddresses(const char* kind, int count)
{
    const manual::RulePlace rules = manual::rulePlace(QString::fromLatin1(kind));
    QVector<QStringList> rows;
    for (int rule = 1; rule <= count; ++rule) {
        const QString name = editor::ruleMember(QString::fromLatin1(kind), rule, QString());
        rows.append({code(name.chopped(1)), place(rules.address + rules.size * (rule - 1))});
    }
    constexpr int half = 50;
    return manual::table({{QStringLiteral("Rule"), half}, {QStringLiteral("First byte"), half}},
                         rows);
}

QString ruleSection(const char* kind, const char* heading, int count)
{
    const manual::RulePlace rules = manual::rulePlace(QString::fromLatin1(kind));
    QVector<QStringList> rows;
    for (const cMySettingsField& member : editor::ruleMembers(QString::fromLatin1(kind), 1)) {
        rows.append(QStringList(QString::number(member.address - rules.address)) +
                    cells(member, member.name.section(QLatin1Char('.'), 1)));
    }
    return QStringLiteral(
               "## %1\n\n%2 records of %3 bytes from %4 on. Rule *n* begins at %5 + %3 * "
               "(*n* - 1). Its members, from there; the name of a field is that of the "
               "rule, a full stop and that of the member, as in `%6`.\n\n")
               .arg(QString::fromLatin1(heading))
               .arg(count)
               .arg(rules.size)
               .arg(place(rules.address))
               .arg(rules.address)
               .arg(editor::ruleMember(QString::fromLatin1(kind), 1, QStringLiteral("condition"))) +
           manual::table(columns("Offset"), rows) + ruleAddresses(kind, count);
}

QString contents(const developer::Span& span)
{
    const QVector<quint8> bytes = defaultFile(span.address, span.size);
    const auto isZero = [](quint8 byte) {
        return byte == 0;
    };
    return std::all_of(bytes.cbegin(), bytes.cend(), isZero) ? QStringLiteral("zeros")
                                                             : code(editor::hexadecimal(bytes));
}

QString unusedSection()
{
    const QVector<developer::Span> spans = developer::unusedBytes();
    QVector<QStringList> rows;
    for (const developer::Span& span : spans) {
        rows.append({place(span.address), place(span.address + span.size - 1),
                     QString::number(span.size), contents(span)});
    }
    const int unused =
        std::accumulate(spans.cbegin(), spans.cend(), 0,
                        [](int sum, const developer::Span& span) { return sum + span.size; });
    constexpr int quarter = 25;
    return QStringLiteral(
               "## Unused bytes\n\nFields cover %1 of the %2 bytes. The other %3 belong to "
               "the device. The program keeps them as they were loaded, and sends them "
               "with the others. In the built-in default settings they are:\n\n")
               .arg(image::settingsImageSize - unused)
               .arg(image::settingsImageSize)
               .arg(unused) +
           manual::table({{QStringLiteral("First"), quarter},
                          {QStringLiteral("Last"), quarter},
                          {QStringLiteral("Bytes"), quarter},
                          {QStringLiteral("By default"), quarter}},
                         rows);
}

/// The fields that offer this table, members of rules once.
QString users(const QString& optionTable)
{
    QStringList names;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.optionTable == optionTable) {
            const QString member = field.name.section(QLatin1Char('.'), 1);
            names += member.isEmpty()
                         ? code(field.name)
                         : QStringLiteral("%1 of %2 rules")
                               .arg(code(member), field.name.startsWith(QLatin1String("timer"))
                                                      ? QStringLiteral("timer")
                                                      : QStringLiteral("message"));
        }
    }
    names.removeDuplicates();
    return names.join(QStringLiteral(", "));
}

QString plainCodes(const QList<QStringList>& rows)
{
    QVector<QStringList> shown;
    for (const QStringList& row : rows) {
        shown.append({row.value(cMyTableModel::Value), literal(row.value(cMyTableModel::Label))});
    }
    constexpr int half = 50;
    return manual::table({{QStringLiteral("Stored"), half}, {QStringLiteral("Label"), half}},
                         shown);
}

QString optionSection()
{
    QString text = QStringLiteral("## Options\n\nEach table is a file `resources/models/NAME.csv`. "
                                  "A stored number that is in "
                                  "no row is kept, and shown as no choice at all.\n\n");
    for (const QString& name : manual::optionTables()) {
        const QList<QStringList> rows = cMyTableModel(editor::optionTableFile(name)).getList();
        text += QStringLiteral("### %1\n\n`resources/models/%1.csv`, for %2.\n\n")
                    .arg(name, users(name)) +
                (manual::areMeasured(rows) ? manual::measuredCodes(rows, {}) : plainCodes(rows));
    }
    return text;
}

QString introduction()
{
    return QStringLiteral(
               "# The settings image\n\n"
               "<!-- Written by miolka-settings-image from the tables of the program. Do not edit: "
               "cmake --build --preset release --target settings-image-page -->\n\n"
               "The settings of a Miolka are an image of %1 bytes: 0 to %2 (%3) of its EEPROM. A "
               "settings file (`.mio`) holds the same bytes at the same addresses, as Intel HEX "
               "records of %4 bytes. This page is written by `miolka-settings-image` from the "
               "table "
               "in `editor/settingslayout.cpp` and the option tables in `resources/models/`.\n\n")
               .arg(image::settingsImageSize)
               .arg(image::settingsImageSize - 1)
               .arg(hexadecimal(image::settingsImageSize - 1))
               .arg(image::settingsRecordLength) +
           QStringLiteral(
               "- **Byte order:** numbers of two bytes have their low byte first. Signed numbers "
               "are "
               "two's complement.\n"
               "- **Factor:** the stored number is the displayed number times the factor, rounded "
               "to "
               "the nearest, a half away from zero. `altitude` and `latitude` are cut to whole "
               "numbers, and so is `gravity`, which follows from them "
               "(`editor::storedGravity()`).\n"
               "- **Range:** what the window lets one enter, in displayed units. A stored number "
               "of "
               "a parameter outside is set to the nearest one inside when it is shown. Members of "
               "rules stay as they are.\n"
               "- **Texts** are Latin-1, ended by a zero byte, so that a field takes one character "
               "less than it has bytes. What lies behind the zero byte has no meaning. By default "
               "the first byte of title and description is zero, and hides the text behind it.\n"
               "- **Version:** `programVersion` is that of the program, one byte for each part. It "
               "is "
               "set each time the settings are written to a device, and not in a file.\n"
               "- **Default:** what `resources/pliki/clear.mio` holds, the file behind \"New\".\n"
               "- **Checks:** the image has no checksum; the records of a file and of the line "
               "have. "
               "Nothing else in a settings file is required: bytes that it does not give keep "
               "their "
               "values. `miolkactl check` is strict: it wants every byte of the image, once.\n\n");
}

QString thresholds()
{
    return QStringLiteral("## Thresholds\n\n"
                          "The threshold of a rule is compared with the value that `measuredValue` "
                          "names, and stored in "
                          "that value's units: its factor, unit and range are those of the value "
                          "in the option table. It "
                          "is signed. The one exception is a value whose range does not reach "
                          "below zero, but beyond "
                          "32767 stored units: the battery level, where 100 % are 32768. Its "
                          "threshold is unsigned "
                          "(`editor::shownThreshold()`).\n\n"
                          "A rule is switched off by the condition %1 (%2, never).\n\n")
        .arg(editor::conditionNever)
        .arg(hexadecimal(editor::conditionNever));
}

} // namespace

namespace developer {

QString settingsImagePage()
{
    const QString text = introduction() + QStringLiteral("## Fields\n\n") + fieldTable() +
                         ruleSection("timerRule", "Timer rules", editor::timerRuleCount) +
                         ruleSection("messageRule", "Message rules", editor::messageRuleCount) +
                         thresholds() + unusedSection() + optionSection();
    return text.trimmed() + QLatin1Char('\n');
}

} // namespace developer
