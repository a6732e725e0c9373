// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldtext.h"

#include "editor/tablemodel.h"
#include "image/memoryarea.h"
#include "tests/support/offeredimage.h"
#include "tests/support/template.h"

#include <QtTest>

/// Fields as a person reads them.
class TestFieldText : public QObject
{
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void thresholdsGoByTheMeasuredValue_data();
    void thresholdsGoByTheMeasuredValue();
    void textsAndVersions();
    void exactNumbersTellNeighboursApart_data();
    void exactNumbersTellNeighboursApart();
    void everyOfferedChoiceHasItsLabel();
    void ruleMembersAreThoseOfTheRule();
};

namespace {

void set(cMyMemoryArea& image, const char* name, int number)
{
    const cMySettingsField& field = support::field(name);
    image.setData(static_cast<quint32>(field.address), editor::numberBytes(number, field));
}

} // namespace

void TestFieldText::values_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, int stored, const char* text) {
        QTest::addRow("%s %d", name, stored)
            << QString::fromLatin1(name) << stored << QString::fromUtf8(text);
    };
    row("volume", -5, "-5 dB");
    row("diveThreshold", 100, "100 cm");
    row("distanceE", 100, "1.00 m");
    row("distanceE", -5, "-0.05 m");
    row("fixedTemperature", 215, "21.5 °C");
    row("gravity", 32132, "9.806 m/s²");
    row("depthSamplingRate", 150, "1 [Hz]");
    row("depthSamplingRate", 37, "4 [Hz]");
    row("depthSamplingRate", 38, "unknown (38)");
    row("timerRule01.time", 65535, "65535 s");
    row("messageRule24.repetition", 255, "still");
}

void TestFieldText::values()
{
    QFETCH(QString, name);
    QFETCH(int, stored);
    cMyMemoryArea image;
    set(image, name.toLatin1().constData(), stored);
    QTEST(editor::valueText(image, editor::settingsField(name)), "text");
}

void TestFieldText::thresholdsGoByTheMeasuredValue_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("depth") << 32 << 500 << "5.00 m" << 5.0;
    QTest::newRow("temperature") << 16 << -15 << QStringLiteral("-1.5 \u00B0C") << -1.5;
    QTest::newRow("battery, above the signed numbers") << 31 << 32768 << "100.00 %" << 100.0;
    QTest::newRow("battery, as typed") << 31 << 6554 << "20.00 %" << 6554 / 327.68;
    QTest::newRow("regardless of any value") << 255 << 500 << "500" << 500.0;
    QTest::newRow("value that does not exist") << 99 << -2 << "-2" << -2.0;
}

void TestFieldText::thresholdsGoByTheMeasuredValue()
{
    QFETCH(int, value);
    QFETCH(int, stored);
    QFETCH(double, number);
    cMyMemoryArea image;
    set(image, "messageRule07.measuredValue", value);
    set(image, "messageRule07.threshold", stored);
    QTEST(editor::valueText(image, support::field("messageRule07.threshold")), "text");
    QCOMPARE(editor::displayedNumber(image, support::field("messageRule07.threshold")), number);
}

void TestFieldText::textsAndVersions()
{
    cMyMemoryArea image;
    const cMySettingsField& author = support::field("author");
    image.setData(static_cast<quint32>(author.address), editor::textBytes("Me & you", author));
    image.setData(0, editor::versionBytes("1.0.4.0"));
    QCOMPARE(editor::valueText(image, author), QStringLiteral("Me & you"));
    QCOMPARE(editor::valueText(image, support::field("programVersion")), QStringLiteral("1.0.4.0"));
}

void TestFieldText::exactNumbersTellNeighboursApart_data()
{
    QTest::addColumn<double>("factor");
    for (const double factor : {1.0, 10.0, 100.0, 327.68, 3276.8}) {
        QTest::newRow(qPrintable(QString::number(factor))) << factor;
    }
}

void TestFieldText::exactNumbersTellNeighboursApart()
{
    QFETCH(double, factor);
    for (int stored = -65536; stored <= 65536; ++stored) {
        const QString text = editor::exactNumber(stored / factor, factor);
        QCOMPARE(qRound(text.toDouble() * factor), stored);
    }
}

void TestFieldText::everyOfferedChoiceHasItsLabel()
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        const cMyTableModel& options = editor::options(field);
        QCOMPARE(options.rowCount() > 0, editor::fieldKind(field) == editor::FieldKind::Choice);
        for (int row = 0; row < options.rowCount(); ++row) {
            cMyMemoryArea image;
            const int stored = static_cast<int>(options.number(row, cMyTableModel::Value));
            set(image, field.name.toLatin1().constData(), stored);
            QCOMPARE(editor::valueText(image, field), options.cell(row, cMyTableModel::Label));
        }
    }
}

void TestFieldText::ruleMembersAreThoseOfTheRule()
{
    const QVector<cMySettingsField> members = editor::ruleMembers(QStringLiteral("timerRule"), 8);
    QStringList names;
    for (const cMySettingsField& field : members) {
        QVERIFY(editor::isRuleMember(field));
        QCOMPARE(editor::isThreshold(field), field.address == members.first().address + 3);
        names += field.name.section(QLatin1Char('.'), 1);
    }
    QCOMPARE(names, (QStringList{"condition", "measuredValue", "comparison", "threshold", "action",
                                 "time"}));
    QCOMPARE(members.first().address, 312);
}

QTEST_GUILESS_MAIN(TestFieldText)
#include "test_fieldtext.moc"
