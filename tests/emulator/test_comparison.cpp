// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/comparison.h"

#include "editor/tablemodel.h"

#include <QtTest>

/// Measured values compared with thresholds.
class TestComparison : public QObject
{
    Q_OBJECT

private slots:
    void scales_data();
    void scales();
    void everyValueIsComparedByItsNumber();
    void regardlessOfAnyValue_data();
    void regardlessOfAnyValue();
    void unknownNumbersAreNeverTrue_data();
    void unknownNumbersAreNeverTrue();
};

namespace {

const cMyTableModel& table()
{
    static const cMyTableModel values(QStringLiteral(":/models/msgCb2.csv"));
    return values;
}

bool isTrue(int number, int comparison, int threshold, int value)
{
    cMyDiveValues values{};
    if (number >= 0 && number < emulator::valueCount) {
        values.at(static_cast<std::size_t>(number)) = static_cast<qint16>(value);
    }
    return cMyComparison(number, comparison, threshold, table()).isTrue(values);
}

} // namespace

void TestComparison::scales_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("threshold");
    QTest::addColumn<bool>("atLeast");
    QTest::addColumn<bool>("atMost");
    QTest::newRow("pressure below") << 0 << 1012 << 1013 << false << true;
    QTest::newRow("pressure at") << 0 << 1013 << 1013 << true << true;
    QTest::newRow("pressure above") << 0 << 1014 << 1013 << true << false;
    QTest::newRow("12.5 degrees against 12.6") << 16 << 125 << 126 << false << true;
    QTest::newRow("12.6 degrees against 12.5") << 16 << 126 << 125 << true << false;
    QTest::newRow("frost against 0 degrees") << 16 << -1 << 0 << false << true;
    QTest::newRow("10.00 m against 10.00 m") << 32 << 1000 << 1000 << true << true;
    QTest::newRow("9.99 m against 10.00 m") << 32 << 999 << 1000 << false << true;
    QTest::newRow("deepest against one less") << 32 << 32767 << 32766 << true << false;
    QTest::newRow("ascent against descent") << 48 << -50 << 50 << false << true;
    QTest::newRow("slow against fast ascent") << 48 << -50 << -51 << true << false;
    QTest::newRow("fast against slow ascent") << 48 << -52 << -51 << false << true;
    QTest::newRow("fastest ascent") << 48 << -32768 << 32767 << false << true;
    QTest::newRow("full battery against full") << 31 << -32768 << -32768 << true << true;
    QTest::newRow("full battery against half") << 31 << -32768 << 16384 << true << false;
    QTest::newRow("half battery against full") << 31 << 16384 << -32768 << false << true;
    QTest::newRow("nearly full against full") << 31 << 32767 << -32768 << false << true;
    QTest::newRow("a fifth against a bit less") << 31 << 6554 << 6553 << true << false;
}

void TestComparison::scales()
{
    QFETCH(int, number);
    QFETCH(int, value);
    QFETCH(int, threshold);
    QTEST(isTrue(number, 0, threshold, value), "atLeast");
    QTEST(isTrue(number, 1, threshold, value), "atMost");
}

void TestComparison::everyValueIsComparedByItsNumber()
{
    for (int row = 0; row < table().rowCount(); ++row) {
        const int number = table().cell(row, cMyTableModel::Value).toInt();
        if (number == 255) {
            continue;
        }
        QVERIFY2(number < emulator::valueCount, qPrintable(QString::number(number)));
        cMyDiveValues values;
        values.fill(5);
        values.at(static_cast<std::size_t>(number)) = 7;
        QVERIFY(cMyComparison(number, 0, 6, table()).isTrue(values));
        QVERIFY(!cMyComparison(number, 1, 6, table()).isTrue(values));
    }
}

void TestComparison::regardlessOfAnyValue_data()
{
    QTest::addColumn<int>("comparison");
    QTest::addColumn<int>("threshold");
    QTest::newRow(">= 0") << 0 << 0;
    QTest::newRow(">= 32767") << 0 << 32767;
    QTest::newRow("<= -32768") << 1 << -32768;
    QTest::newRow("unknown comparison") << 99 << 5;
}

void TestComparison::regardlessOfAnyValue()
{
    QFETCH(int, comparison);
    QFETCH(int, threshold);
    QVERIFY(isTrue(255, comparison, threshold, 0));
}

void TestComparison::unknownNumbersAreNeverTrue_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("comparison");
    for (int number = 0; number < 255; ++number) {
        if (table().rowOfValue(number) < 0) {
            QTest::addRow("value %d", number) << number << 0;
            QTest::addRow("value %d at most", number) << number << 1;
        }
    }
    for (int comparison = 2; comparison <= 255; ++comparison) {
        QTest::addRow("comparison %d", comparison) << 32 << comparison;
    }
}

void TestComparison::unknownNumbersAreNeverTrue()
{
    QFETCH(int, number);
    QFETCH(int, comparison);
    QVERIFY(!isTrue(number, comparison, 0, 0));
    QVERIFY(!isTrue(number, comparison, -1, 1));
    QVERIFY(!isTrue(number, comparison, 1, -1));
}

QTEST_GUILESS_MAIN(TestComparison)
#include "test_comparison.moc"
