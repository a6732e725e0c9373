// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/fieldinput.h"

#include "cli/fieldnames.h"
#include "cli/settingsource.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"
#include "tests/support/offeredimage.h"

#include <QtTest>

/// Values as users type them.
class TestFieldInput : public QObject
{
    Q_OBJECT

private slots:
    void accepted_data();
    void accepted();
    void refused_data();
    void refused();
    void everyOfferedChoiceComesBack();
    void everyStoredChoiceComesBack();
    void everyNumberComesBack();
    void everyThresholdComesBack();
    void randomImagesComeBack_data();
    void randomImagesComeBack();
    void textsComeBack();
    void unknownNames_data();
    void unknownNames();
};

namespace {

void put(cMyMemoryArea& image, const cMySettingsField& field, const QVector<quint8>& bytes)
{
    image.setData(static_cast<quint32>(field.address), bytes);
}

/// Whether typing what a field reads as gives the bytes that it holds.
bool comesBack(const cMyMemoryArea& image, const cMySettingsField& field)
{
    QVector<quint8> bytes;
    const cMyOutcome parsed = cli::parseValue(cli::inputText(image, field), field, image, bytes);
    const QVector<quint8> stored = editor::storedBytes(image, field);
    if (!parsed.isDone() || bytes.isEmpty() || stored.mid(0, bytes.size()) != bytes) {
        qWarning() << field.name << cli::inputText(image, field) << parsed.reasons << bytes;
        return false;
    }
    return true;
}

/// Adds one row of refused input: the field, the text and the reason.
void refuse(const char* name, const char* text, const char* reason)
{
    QTest::addRow("%s=%s", name, qPrintable(QString::fromUtf8(text).simplified()))
        << QString::fromLatin1(name) << QString::fromUtf8(text) << QString::fromUtf8(reason);
}

void refuseNumbers()
{
    refuse("diveThreshold", "4", "diveThreshold: 4 is out of range; it takes 5 to 255 cm");
    refuse("diveThreshold", "256", "diveThreshold: 256 is out of range; it takes 5 to 255 cm");
    refuse("diveThreshold", "999999999 cm",
           "diveThreshold: 999999999 is out of range; it takes 5 to 255 cm");
    refuse("diveThreshold", "1.00 m",
           "diveThreshold: \"1.00 m\" is no number in cm; it takes 5 to 255 cm");
    refuse("diveThreshold", "1e2",
           "diveThreshold: \"1e2\" is no number in cm; it takes 5 to 255 cm");
    refuse("diveThreshold", "0x64",
           "diveThreshold: \"0x64\" is no number in cm; it takes 5 to 255 cm");
    refuse("diveThreshold", "1,5",
           "diveThreshold: \"1,5\" is no number in cm; it takes 5 to 255 cm");
    refuse("diveThreshold", "", "diveThreshold: \"\" is no number in cm; it takes 5 to 255 cm");
    refuse("diveThreshold", "nan",
           "diveThreshold: \"nan\" is no number in cm; it takes 5 to 255 cm");
    refuse("diveThreshold", "100.5",
           "diveThreshold: 100.5 cannot be stored; the nearest that can is 101 cm");
    refuse("distanceE", "1.234",
           "distanceE: 1.234 cannot be stored; the nearest that can is 1.23 m");
    refuse("distanceE", "1.231",
           "distanceE: 1.231 cannot be stored; the nearest that can is 1.23 m");
    refuse("distanceE", "-0.01", "distanceE: -0.01 is out of range; it takes 0.00 to 99.99 m");
    refuse("messageRule01.threshold", "-0.01 m",
           "messageRule01.threshold: -0.01 is out of range; it takes 0.00 to 327.67 m");
    refuse("messageRule01.threshold", "20 %",
           "messageRule01.threshold: \"20 %\" is no number in m; it takes 0.00 to 327.67 m");
    refuse("messageRule02.threshold", "100.01",
           "messageRule02.threshold: 100.01 is out of range; it takes 0.00 to 100.00 %");
}

void refuseChoicesAndTexts()
{
    refuse("depthSamplingRate", "7 [Hz]",
           "depthSamplingRate: \"7 [Hz]\" is not offered; choose one of: 1 [Hz], 2 [Hz], 3 [Hz], "
           "4 [Hz], 5 [Hz], 10 [Hz]");
    refuse("depthSamplingRate", "15",
           "depthSamplingRate: \"15\" is not offered; choose one of: 1 [Hz], 2 [Hz], 3 [Hz], "
           "4 [Hz], 5 [Hz], 10 [Hz]; the stored number 15 is given as \"#15\"");
    refuse("suspendSampling", "6",
           "suspendSampling: \"6\" is not offered; choose one of: 1 [s], 2 [s], 4 [s], 8 [s]; the "
           "stored number 6 is given as \"#6\"");
    refuse("suspendDelay", "5", "suspendDelay: \"5\" may mean 5 [min] or 5 [h]");
    refuse("suspendSampling", "#256",
           "suspendSampling: \"#256\" is no stored number; it takes #0 to #255");
    refuse("suspendSampling", "#-1",
           "suspendSampling: \"#-1\" is no stored number; it takes #0 to #255");
    refuse("suspendSampling", "#",
           "suspendSampling: \"#\" is no stored number; it takes #0 to #255");
    refuse(
        "messageRule01.message", "34",
        "messageRule01.message: \"34\" is not offered; the manual lists what is; the stored number "
        "34 is given as \"#34\"");
    refuse("messageRule01.message", "DEPTH max",
           "messageRule01.message: \"DEPTH max\" may mean Depth max or Depth MAX");
    refuse("messageRule01.message", "Swim fast",
           "messageRule01.message: \"Swim fast\" is not offered; do you mean Swim faster?");
    refuse("author", "1234567890123456",
           "author: the text has 16 characters, but there is room for 15");
    refuse(
        "author", "Zoë",
        "author: character 3, \"ë\", is none that the device's texts have: only ASCII, from space "
        "to tilde");
    refuse("author", "a\nb",
           "author: character 2, \"\n\", is none that the device's texts have: only ASCII, from "
           "space to tilde");
    refuse("programVersion", "1.0.4.0",
           "programVersion: cannot be set; writing to a device sets it");
}

/// In settings whose first two message rules compare the depth and the battery level.
cMyOutcome parse(const QString& name, const QString& text, QVector<quint8>& parsed)
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    put(image, support::field("messageRule01.measuredValue"), {32});
    put(image, support::field("messageRule02.measuredValue"), {31});
    return cli::parseValue(text, editor::settingsField(name), image, parsed);
}

} // namespace

void TestFieldInput::accepted_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* name, const char* text, const char* hex) {
        QTest::addRow("%s=%s", name, qPrintable(QString::fromUtf8(text).simplified()))
            << QString::fromLatin1(name) << QString::fromUtf8(text) << QByteArray::fromHex(hex);
    };
    row("diveThreshold", "120", "78");
    row("diveThreshold", "120 cm", "78");
    row("diveThreshold", " 120cm ", "78");
    row("diveThreshold", "+5", "05");
    row("volume", "-57 dB", "C7");
    row("distanceE", "1.5", "96 00");
    row("distanceE", "99.99 m", "0F 27");
    row("fixedTemperature", "21.5 °C", "D7 00");
    row("latitude", "52°", "34");
    row("gravity", "9.806", "84 7D");
    row("depthSamplingRate", "1 [Hz]", "96");
    row("depthSamplingRate", "10 hz", "0F");
    row("depthSamplingRate", "10", "0F");
    row("depthSamplingRate", "10Hz", "0F");
    row("depthSamplingRate", "#15", "0F");
    row("depthSamplingRate", "#99", "63");
    row("suspendSampling", "4", "07");
    row("suspendSampling", "4 s", "07");
    row("suspendSampling", "#6", "06");
    row("suspendDelay", "12", "C0 A8");
    row("suspendDelay", "5 min", "2C 01");
    row("suspendDelay", "#65535", "FF FF");
    row("messageRule01.message", "#34", "22");
    row("messageRule01.message", "Depth max", "22");
    row("messageRule01.message", "Depth MAX", "25");
    row("messageRule01.message", "depth max", "22");
    row("messageRule01.message", "depth MAX", "25");
    row("messageRule01.message", "SHOW ok", "EA");
    row("messageRule01.repetition", "#255", "FF");
    row("messageRule01.comparison", "<=", "01");
    row("messageRule01.form", "(VALUE & point)", "00");
    row("timerRule08.time", "65535 s", "FF FF");
    row("messageRule01.threshold", "5.00 m", "F4 01");
    row("messageRule02.threshold", "100 %", "00 80");
    row("messageRule03.threshold", "-7", "F9 FF");
    row("author", "", "00");
    row("author", R"(a=b \n\\)", "61 3D 62 20 5C 6E 5C 5C 00");
    row("author", "123456789012345", "31 32 33 34 35 36 37 38 39 30 31 32 33 34 35 00");
    row("description", R"(a\nb\\n\c)", "61 0A 62 5C 6E 5C 63 00");
    row("description", "a\nb", "61 0A 62 00");
}

void TestFieldInput::accepted()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QVector<quint8> parsed;
    const cMyOutcome outcome = parse(name, text, parsed);
    QVERIFY2(outcome.isDone(), qPrintable(outcome.reasons.join(' ')));
    QCOMPARE(parsed, QVector<quint8>(bytes.cbegin(), bytes.cend()));
}

void TestFieldInput::refused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    refuseNumbers();
    refuseChoicesAndTexts();
}

void TestFieldInput::refused()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, reason);
    QVector<quint8> parsed;
    const cMyOutcome outcome = parse(name, text, parsed);
    QVERIFY(outcome.status == cli::ExitStatus::Usage);
    QCOMPARE(outcome.reasons, QStringList{reason});
    QVERIFY(parsed.isEmpty());
}

void TestFieldInput::everyOfferedChoiceComesBack()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    for (const cMySettingsField& field : editor::settingsFields()) {
        const cMyTableModel& options = editor::options(field);
        for (int row = 0; row < options.rowCount(); ++row) {
            const int value = static_cast<int>(options.number(row, cMyTableModel::Value));
            put(image, field, editor::numberBytes(value, field));
            QVERIFY(comesBack(image, field));
        }
    }
}

/// What no table knows has no label, and must not become what somebody else offers.
void TestFieldInput::everyStoredChoiceComesBack()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    for (const char* name : {"depthSamplingRate", "suspendDelay", "messageRule01.message"}) {
        const cMySettingsField& field = support::field(name);
        for (int stored = 0; stored < (1 << (8 * field.width)); ++stored) {
            put(image, field, editor::numberBytes(stored, field));
            QVERIFY(comesBack(image, field));
        }
    }
}

void TestFieldInput::everyNumberComesBack()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    for (const cMySettingsField& field : editor::settingsFields()) {
        const bool isLaterRule =
            editor::isRuleMember(field) && !field.name.contains(QLatin1String("01."));
        if (editor::fieldKind(field) != editor::FieldKind::Number || isLaterRule) {
            continue;
        }
        const int last = qRound(field.maximum * field.factor);
        for (int stored = qRound(field.minimum * field.factor); stored <= last; ++stored) {
            put(image, field, editor::numberBytes(stored, field));
            QVERIFY(comesBack(image, field));
        }
    }
}

void TestFieldInput::everyThresholdComesBack()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    for (const int value : {0, 16, 31, 32, 48}) { // one of each scale
        put(image, support::field("messageRule24.measuredValue"), {static_cast<quint8>(value)});
        const cMySettingsField& field = support::field("messageRule24.threshold");
        const cMyThresholdScale scale = editor::numberScale(image, field);
        const int last = qRound(scale.maximum * scale.factor);
        for (int stored = qRound(scale.minimum * scale.factor); stored <= last; ++stored) {
            put(image, field, editor::numberBytes(stored, field));
            QVERIFY(comesBack(image, field));
        }
    }
}

void TestFieldInput::randomImagesComeBack_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 10; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void TestFieldInput::randomImagesComeBack()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QByteArray bytes = support::offeredImage(random);
    cMyMemoryArea image;
    image.setData(0, QVector<quint8>(bytes.cbegin(), bytes.cend()));
    for (const cMySettingsField& field : editor::settingsFields()) {
        const cMyThresholdScale scale = editor::numberScale(image, field);
        const double number = editor::displayedNumber(image, field);
        const bool isInRange =
            !editor::isThreshold(field) || (number >= scale.minimum && number <= scale.maximum);
        const bool isValue = editor::fieldKind(field) == editor::FieldKind::Number ||
                             editor::fieldKind(field) == editor::FieldKind::Choice;
        QVERIFY(!isValue || !isInRange || comesBack(image, field));
    }
}

void TestFieldInput::textsComeBack()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    QString all;
    for (char character = ' '; character <= '~'; ++character) {
        all += QLatin1Char(character);
    }
    const cMySettingsField& description = support::field("description");
    for (const QString& text : {all, all + QLatin1Char('\n') + all, QStringLiteral("\\n\n\\\\\n"),
                                QString(), QString(511, QLatin1Char('\n'))}) {
        put(image, description, editor::textBytes(text, description));
        QVERIFY(!cli::inputText(image, description).contains(QLatin1Char('\n')));
        QVERIFY(comesBack(image, description));
    }
    const cMySettingsField& title = support::field("title");
    for (int from = 0; from < all.size(); from += editor::textCapacity(title)) {
        put(image, title, editor::textBytes(all.mid(from), title));
        QVERIFY(comesBack(image, title));
    }
}

void TestFieldInput::unknownNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("hint");
    QTest::newRow("small letters") << "divethreshold"
                                   << "do you mean diveThreshold,";
    QTest::newRow("letter left out") << "voume"
                                     << "do you mean volume?";
    QTest::newRow("rule without a zero") << "messageRule7"
                                         << "do you mean messageRule";
    QTest::newRow("member that is none") << "timerRule01.tim"
                                         << "do you mean timerRule01.time,";
    QTest::newRow("nothing like it") << "xyz"
                                     << "lists them all";
    QTest::newRow("empty") << ""
                           << "lists them all";
    QTest::newRow("very long") << QString(100000, 'a') << "lists them all";
}

void TestFieldInput::unknownNames()
{
    QFETCH(QString, name);
    QFETCH(QString, hint);
    QVector<cMySettingsField> fields;
    const cMyOutcome found = cli::findFields(name, fields);
    QVERIFY(found.status == cli::ExitStatus::Usage);
    QVERIFY(fields.isEmpty());
    QVERIFY2(found.reasons.first().contains(hint), qPrintable(found.reasons.first().right(200)));
}

QTEST_GUILESS_MAIN(TestFieldInput)
#include "test_fieldinput.moc"
