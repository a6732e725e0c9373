// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/spokenform.h"

#include <QtTest>

/// Messages in words.
class TestSpokenForm : public QObject
{
    Q_OBJECT

private slots:
    void forms_data();
    void forms();
    void unknownFormsTellAll();
    void everyMessage();
    void messagesWithoutAValueHaveOneForm();
    void lines_data();
    void lines();
};

namespace {

QString spoken(int message, int form, int value)
{
    cMyDiveValues values{};
    if (message < emulator::valueCount) {
        values.at(static_cast<std::size_t>(message)) = static_cast<qint16>(value);
    }
    return cMySpokenForm(message, form, cMyMessageTables()).text(values);
}

} // namespace

void TestSpokenForm::forms_data()
{
    QTest::addColumn<int>("message");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("forms");
    const auto row = [](const char* name, int message, int value, const char* forms) {
        QTest::newRow(name) << message << value << QString::fromUtf8(forms).split(QLatin1Char('|'));
    };
    row("two decimals", 32, 1250,
        "12.50|12.50 m|13|13 m|Depth 12.50|Depth 12.50 m|Depth 13|Depth 13 m");
    row("one decimal", 16, 174,
        "17.4|17.4 °C|17|17 °C|Temperature 17.4|Temperature 17.4 °C|Temperature 17|"
        "Temperature 17 °C");
    row("no decimals", 0, 1013,
        "1013|1013 mbar|1013|1013 mbar|Absolute pressure 1013|Absolute pressure 1013 mbar|"
        "Absolute pressure 1013|Absolute pressure 1013 mbar");
    row("below zero", 48, -150,
        "-1.50|-1.50 m/s|-2|-2 m/s|Vertical speed -1.50|Vertical speed -1.50 m/s|"
        "Vertical speed -2|Vertical speed -2 m/s");
    row("a little below zero", 16, -4,
        "-0.4|-0.4 °C|0|0 °C|Temperature -0.4|Temperature -0.4 °C|Temperature 0|Temperature 0 °C");
    row("full battery", 31, -32768,
        "100.00|100.00 %|100|100 %|Battery level 100.00|Battery level 100.00 %|Battery level 100|"
        "Battery level 100 %");
    row("a fifth of a battery", 31, 6554,
        "20.00|20.00 %|20|20 %|Battery level 20.00|Battery level 20.00 %|Battery level 20|"
        "Battery level 20 %");
    row("just below a half", 32, 1249,
        "12.49|12.49 m|12|12 m|Depth 12.49|Depth 12.49 m|Depth 12|Depth 12 m");
    row("greatest", 34, 32767,
        "327.67|327.67 m|328|328 m|Depth max 327.67|Depth max 327.67 m|Depth max 328|"
        "Depth max 328 m");
    row("nothing", 57, 0, "0|0 s|0|0 s|Timer 1 0|Timer 1 0 s|Timer 1 0|Timer 1 0 s");
}

void TestSpokenForm::forms()
{
    QFETCH(int, message);
    QFETCH(int, value);
    QFETCH(QStringList, forms);
    QStringList found;
    for (int form = 0; form < forms.size(); ++form) {
        found.append(spoken(message, form, value));
    }
    QCOMPARE(found, forms);
}

void TestSpokenForm::unknownFormsTellAll()
{
    for (int form = 8; form <= 255; ++form) {
        QCOMPARE(spoken(32, form, 1250), QStringLiteral("Depth 12.50 m"));
    }
}

void TestSpokenForm::everyMessage()
{
    const cMyMessageTables tables;
    int said = 0;
    for (int message = 0; message <= 255; ++message) {
        const int row = tables.messages.rowOfValue(message);
        const cMySpokenForm form(message, 6, tables);
        QCOMPARE(form.isSilent(), row < 0 || message == 127);
        if (form.isSilent()) {
            QCOMPARE(form.text({}), QString());
            continue;
        }
        const QString label = tables.messages.cell(row, cMyTableModel::Label);
        const bool isMeasured = message < emulator::valueCount;
        QCOMPARE(form.text({}), isMeasured ? label + QStringLiteral(" 0") : label);
        ++said;
    }
    QCOMPARE(said, tables.messages.rowCount() - 1);
}

void TestSpokenForm::messagesWithoutAValueHaveOneForm()
{
    for (int form = 0; form <= 8; ++form) {
        QCOMPARE(spoken(226, form, 5), QStringLiteral("Breathe!"));
        QCOMPARE(spoken(243, form, 5), QStringLiteral("Custom message 3"));
    }
}

void TestSpokenForm::lines_data()
{
    QTest::addColumn<qint64>("time");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("rule");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* line, qint64 time, int depth, int rule) {
        QTest::newRow(line) << time << depth << rule << QString::fromLatin1(line);
    };
    row("12.0 s  5.02 m  rule 3: Depth 5.02 m", 12000, 502, 3);
    row("0.0 s  0.00 m  rule 1: Depth 5.02 m", 0, 0, 1);
    row("7200.5 s  327.67 m  rule 24: Depth 5.02 m", 7200500, 32767, 24);
    row("1.3 s  -0.05 m  rule 10: Depth 5.02 m", 1320, -5, 10);
}

void TestSpokenForm::lines()
{
    QFETCH(qint64, time);
    QFETCH(int, depth);
    QFETCH(int, rule);
    QTEST(emulator::spokenLine({time, depth, rule, QStringLiteral("Depth 5.02 m")}), "line");
    QVERIFY(
        emulator::spokenLine({0, 0, 1, QStringLiteral("%1 %3")}).endsWith(QLatin1String("%1 %3")));
}

QTEST_GUILESS_MAIN(TestSpokenForm)
#include "test_spokenform.moc"
