// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settingslayout.h"

#include "tests/support/template.h"

#include <QSet>
#include <QtTest>

class TestSettingsLayout : public QObject
{
    Q_OBJECT

private slots:
    void namesAreUnique();
    void fieldsLieInsideTheImageAndDoNotOverlap();
    void defaultsEqualTheBuiltInFile();
    void rangesCanBeEncoded();
    void aChoiceOfARuleMayBeAnyByte();
    void bytesOfNoFieldAreTheKnownGaps();
    void addresses_data();
    void addresses();
};

void TestSettingsLayout::namesAreUnique()
{
    QSet<QString> names;
    for (const cMySettingsField& field : editor::settingsFields()) {
        QVERIFY2(!names.contains(field.name), qPrintable(field.name));
        names.insert(field.name);
    }
    QCOMPARE(names.size(), 26 + 8 * 6 + 24 * 7);
}

void TestSettingsLayout::fieldsLieInsideTheImageAndDoNotOverlap()
{
    int end = 0;
    for (const cMySettingsField& field : editor::settingsFields()) {
        QVERIFY2(field.address >= end, qPrintable(field.name));
        QVERIFY(field.width > 0);
        end = field.address + field.width;
    }
    QCOMPARE(end, image::settingsImageSize);
}

void TestSettingsLayout::defaultsEqualTheBuiltInFile()
{
    cMyMemoryArea area;
    QVERIFY(image::readSettingsFile(QStringLiteral(":/pliki/clear.mio"), area));
    const QByteArray builtIn = support::bytesOf(area);
    QCOMPARE(builtIn, support::templateImage());
    for (const cMySettingsField& field : editor::settingsFields()) {
        QCOMPARE(field.defaultBytes.size(), field.width);
        QVERIFY2(field.defaultBytes == builtIn.mid(field.address, field.width),
                 qPrintable(field.name));
    }
}

void TestSettingsLayout::rangesCanBeEncoded()
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.encoding == FieldEncoding::Text || field.encoding == FieldEncoding::Bytes) {
            continue;
        }
        const bool isSigned = field.encoding == FieldEncoding::Signed;
        const double units = std::pow(2.0, 8 * field.width - (isSigned ? 1 : 0));
        QVERIFY2(field.minimum <= field.maximum, qPrintable(field.name));
        QVERIFY2(field.minimum * field.factor >= (isSigned ? -units : 0), qPrintable(field.name));
        QVERIFY2(field.maximum * field.factor <= units - 1, qPrintable(field.name));
    }
}

void TestSettingsLayout::aChoiceOfARuleMayBeAnyByte()
{
    // The device may know more of them than are offered.
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!field.optionTable.isEmpty() && field.name.contains(QLatin1String("Rule"))) {
            QVERIFY2(field.width == 1 && field.minimum == 0 && field.maximum == 255,
                     qPrintable(field.name));
        }
    }
}

void TestSettingsLayout::bytesOfNoFieldAreTheKnownGaps()
{
    QVector<bool> covered(image::settingsImageSize, false);
    for (const cMySettingsField& field : editor::settingsFields()) {
        std::fill_n(covered.begin() + field.address, field.width, true);
    }
    const QVector<std::pair<int, int>> gaps = {{4, 15},    {64, 127},  {133, 135}, {137, 137},
                                               {139, 143}, {148, 151}, {153, 153}, {155, 155},
                                               {160, 219}, {223, 239}, {244, 247}};
    int inGaps = 0;
    for (const auto& [first, last] : gaps) {
        for (int address = first; address <= last; ++address) {
            QVERIFY2(!covered.at(address), qPrintable(QString::number(address)));
            ++inGaps;
        }
    }
    QCOMPARE(static_cast<int>(covered.count(false)), inGaps);
}

void TestSettingsLayout::addresses_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("width");
    QTest::newRow("volume") << 129 << 1;
    QTest::newRow("suspendDelay") << 130 << 2;
    QTest::newRow("gravity") << 158 << 2;
    QTest::newRow("latitude") << 222 << 1;
    QTest::newRow("distanceH") << 254 << 2;
    QTest::newRow("timerRule01.condition") << 256 << 1;
    QTest::newRow("timerRule08.time") << 318 << 2;
    QTest::newRow("messageRule01.condition") << 320 << 1;
    QTest::newRow("messageRule24.threshold") << 507 << 2;
    QTest::newRow("messageRule24.repetition") << 511 << 1;
    QTest::newRow("description") << 512 << 512;
}

void TestSettingsLayout::addresses()
{
    QFETCH(int, address);
    QFETCH(int, width);
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.name == QLatin1String(QTest::currentDataTag())) {
            QCOMPARE(field.address, address);
            QCOMPARE(field.width, width);
            return;
        }
    }
    QFAIL("no such field");
}

QTEST_GUILESS_MAIN(TestSettingsLayout)
#include "test_settingslayout.moc"
