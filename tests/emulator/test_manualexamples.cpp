// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/tablemodel.h"
#include "image/settingsfile.h"
#include "tests/emulator/divingsession.h"
#include "tests/emulator/manualexample.h"
#include "tests/support/posix.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

using support::Cells;
using support::ManualExample;

/// The settings files of the manual's examples do what the manual says of them.
class TestManualExamples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eachFileBelongsToAnExample();
    void aFileIsAsTheProgramSavesIt_data();
    void aFileIsAsTheProgramSavesIt();
    void everyChangedSettingIsInTheTable_data();
    void everyChangedSettingIsInTheTable();
    void everyRuleIsInTheTable_data();
    void everyRuleIsInTheTable();
    void theDiveIsHeardAsPrinted_data();
    void theDiveIsHeardAsPrinted();
    void theRecordsInTheAppendixAreInTheFile();

private:
    QTranslator m_english;
};

namespace {

const char* const timerMembers[] = {"condition", "measuredValue", "comparison",
                                    "threshold", "action",        "time"};
const char* const messageMembers[] = {"condition", "measuredValue", "comparison", "threshold",
                                      "message",   "form",          "repetition"};

QString settingsPath(const QString& name)
{
    return QStringLiteral(MIOLKA_SOURCE_DIR "/docs/examples/%1.mio").arg(name);
}

const ManualExample& example()
{
    static const QVector<ManualExample> examples = support::manualExamples();
    QFETCH(int, index);
    return examples.at(index);
}

void addExamples()
{
    QTest::addColumn<int>("index");
    const QVector<ManualExample> examples = support::manualExamples();
    for (int i = 0; i < examples.size(); ++i) {
        QTest::newRow(qPrintable(examples.at(i).name)) << i;
    }
}

void load(const ManualExample& example, cMyMemoryArea& settings)
{
    QVERIFY(image::readSettingsFile(settingsPath(example.name), settings));
    QCOMPARE(support::bytesOf(settings).size(), image::settingsImageSize);
}

QString withUnit(double number, double factor, const QString& unit)
{
    const int decimals = editor::decimalsOfFactor(factor).value_or(0);
    const QString text = QString::number(number, 'f', decimals);
    return unit.isEmpty() ? text : text + QLatin1Char(' ') + unit;
}

/// What the editor shows in a field's input.
QString shown(const cMyMemoryArea& settings, const cMySettingsField& field)
{
    if (field.encoding == FieldEncoding::Text) {
        return editor::storedText(settings, field);
    }
    const int number = editor::storedNumber(settings, field);
    if (!field.optionTable.isEmpty()) {
        const cMyTableModel options(editor::optionTableFile(field));
        return options.cell(options.rowOfValue(number), cMyTableModel::Label);
    }
    return withUnit(number / field.factor, field.factor, QStringLiteral("[%1]").arg(field.unit));
}

/// A threshold is shown as the value that it is compared with.
QString shownThreshold(const cMyMemoryArea& settings, const cMySettingsField& value,
                       const cMySettingsField& threshold)
{
    const cMyTableModel values(editor::optionTableFile(value));
    const cMyThresholdScale scale =
        editor::thresholdScale(values, values.rowOfValue(editor::storedNumber(settings, value)));
    const double number = editor::shownThreshold(editor::storedNumber(settings, threshold), scale);
    return withUnit(number, scale.factor, scale.unit);
}

bool isOfRule(const cMySettingsField& field)
{
    return field.name.contains(QLatin1String("Rule"));
}

/// The settings besides the rules that are not the built-in ones, and what the editor shows there.
QVector<Cells> changedSettings(const cMyMemoryArea& settings)
{
    cMyMemoryArea defaults;
    const QByteArray image = support::templateImage();
    defaults.setData(0, QVector<quint8>(image.cbegin(), image.cend()));
    QVector<Cells> rows;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!isOfRule(field) &&
            editor::storedBytes(settings, field) != editor::storedBytes(defaults, field)) {
            rows.append({editor::caption(field), shown(settings, field)});
        }
    }
    return rows;
}

/// The rules that are not switched off, as the editor shows them.
template <std::size_t MemberCount>
QVector<Cells> rulesOf(const cMyMemoryArea& settings, const char* kind, int count,
                       const char* const (&members)[MemberCount])
{
    QVector<Cells> rows;
    for (int rule = 1; rule <= count; ++rule) {
        const auto field = [kind, rule](const char* member) -> const cMySettingsField& {
            return editor::settingsField(
                editor::ruleMember(QString::fromLatin1(kind), rule, QString::fromLatin1(member)));
        };
        if (editor::storedNumber(settings, field("condition")) == editor::conditionNever) {
            continue;
        }
        Cells row(QString::number(rule));
        for (const char* member : members) {
            row += qstrcmp(member, "threshold") == 0
                       ? shownThreshold(settings, field("measuredValue"), field(member))
                       : shown(settings, field(member));
        }
        rows.append(row);
    }
    return rows;
}

/// A table as text, so that a difference can be read.
QString text(const QVector<Cells>& rows)
{
    QStringList lines;
    for (const Cells& row : rows) {
        lines += row.join(QLatin1String(" | "));
    }
    return lines.join(QLatin1Char('\n'));
}

/// What is spoken in a dive for which somebody moves the slider, by a host that writes
/// every tenth of a second.
QStringList heard(const QByteArray& settings, const QVector<support::DivePart>& dive)
{
    constexpr int step = 100;  // in ms
    constexpr int offset = 50; // in ms
    constexpr int second = 1000;
    support::DivingSession session;
    session.device.setMemory(EEPROM, settings);
    session.simulate();
    session.now += offset;
    int pressure = 0; // over that at the surface, in thousandths of a mbar
    for (const support::DivePart& part : dive) {
        for (int time = 0; time < part.seconds * second; time += step) {
            session.now += step;
            pressure = std::max(0, pressure + part.speed * step);
            session.write(pressure / second);
        }
    }
    support::ask(session.device, "#ROOT");
    return session.said;
}

} // namespace

void TestManualExamples::initTestCase()
{
    QVERIFY(m_english.load(QStringLiteral(MIOLKA_BINARY_DIR "/resources/english.qm")));
    QCoreApplication::installTranslator(&m_english);
}

void TestManualExamples::eachFileBelongsToAnExample()
{
    QStringList named;
    for (const ManualExample& each : support::manualExamples()) {
        named += each.name + QStringLiteral(".mio");
    }
    named.sort();
    const QDir directory(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/examples"));
    QVERIFY(!named.isEmpty());
    QCOMPARE(directory.entryList(QDir::Files, QDir::Name), named);
}

void TestManualExamples::aFileIsAsTheProgramSavesIt_data()
{
    addExamples();
}

void TestManualExamples::aFileIsAsTheProgramSavesIt()
{
    const QTemporaryDir directory;
    const QString copy = directory.filePath(QStringLiteral("copy.mio"));
    cMyMemoryArea settings;
    load(example(), settings);
    QVERIFY(image::writeSettingsFile(copy, settings));
    QCOMPARE(support::readFile(settingsPath(example().name)), support::readFile(copy));
}

void TestManualExamples::everyChangedSettingIsInTheTable_data()
{
    addExamples();
}

void TestManualExamples::everyChangedSettingIsInTheTable()
{
    cMyMemoryArea settings;
    load(example(), settings);
    QCOMPARE(text(changedSettings(settings)), text(example().settings));
}

void TestManualExamples::everyRuleIsInTheTable_data()
{
    addExamples();
}

void TestManualExamples::everyRuleIsInTheTable()
{
    cMyMemoryArea settings;
    load(example(), settings);
    QCOMPARE(text(rulesOf(settings, "timerRule", editor::timerRuleCount, timerMembers)),
             text(example().timerRules));
    QCOMPARE(text(rulesOf(settings, "messageRule", editor::messageRuleCount, messageMembers)),
             text(example().messageRules));
}

void TestManualExamples::theDiveIsHeardAsPrinted_data()
{
    addExamples();
}

void TestManualExamples::theDiveIsHeardAsPrinted()
{
    cMyMemoryArea settings;
    load(example(), settings);
    QVERIFY(!example().heard.isEmpty());
    const QStringList said = heard(support::bytesOf(settings), example().dive);
    QVERIFY2(said == example().heard, qPrintable(said.join(QLatin1Char('\n'))));
}

void TestManualExamples::theRecordsInTheAppendixAreInTheFile()
{
    const QStringList file =
        QString::fromLatin1(support::readFile(settingsPath(QStringLiteral("depth-every-5-m"))))
            .split(QLatin1Char('\n'));
    const QString appendix = QString::fromUtf8(support::readFile(
        QStringLiteral(MIOLKA_SOURCE_DIR "/docs/manual/chapters/A-file-format.md")));
    const QStringList blocks = appendix.split(QStringLiteral("```record\n"));
    QVERIFY(blocks.size() > 1);
    for (const QString& block : blocks.mid(1)) {
        const QString record = block.section(QLatin1Char('\n'), 0, 0);
        QVERIFY2(file.contains(record), qPrintable(record));
    }
}

QTEST_GUILESS_MAIN(TestManualExamples)
#include "test_manualexamples.moc"
