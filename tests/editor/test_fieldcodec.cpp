// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldcodec.h"

#include "tests/support/offeredimage.h"
#include "tests/support/template.h"

#include <QtTest>

/// Fields between their bytes and what a person reads.
class TestFieldCodec : public QObject
{
    Q_OBJECT

private slots:
    void gravity_data();
    void gravity();
    void gravityOfTheDefaults();
    void numbers_data();
    void numbers();
    void numbersComeBack();
    void texts_data();
    void texts();
    void textsToBytes();
    void fieldsByName();
    void thresholds_data();
    void thresholds();
    void everyStoredThresholdOfOneUnitComesBack();
    void aPlainUnitHasNoBrackets();
    void decimals_data();
    void decimals();
    void versions_data();
    void versions();
};

void TestFieldCodec::gravity_data()
{
    QTest::addColumn<double>("altitude");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<int>("stored");
    QTest::newRow("45 degrees at sea level") << 0.0 << 45.0 << 32132;
    QTest::newRow("equator at sea level") << 0.0 << 0.0 << 32048;
    QTest::newRow("pole, with the device's pi") << 0.0 << 90.0 << 32218;
    QTest::newRow("high lake") << 3812.0 << 16.0 << 32022;
    QTest::newRow("highest") << 10000.0 << 0.0 << 31947;
    QTest::newRow("below the sea") << -1000.0 << 45.0 << 32142;
}

void TestFieldCodec::gravity()
{
    QFETCH(double, altitude);
    QFETCH(double, latitude);
    QTEST(editor::storedGravity(altitude, latitude), "stored");
}

void TestFieldCodec::gravityOfTheDefaults()
{
    QCOMPARE(editor::numberBytes(editor::storedGravity(0, 45), support::field("gravity")),
             (QVector<quint8>{0x84, 0x7D}));
}

void TestFieldCodec::numbers_data()
{
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    QTest::addColumn<int>("number");
    QTest::newRow("volume") << 0xFB << 0x55 << -5;
    QTest::newRow("salinity") << 0xFB << 0x55 << 251;
    QTest::newRow("suspendDelay") << 0xC0 << 0xA8 << 43200;
    QTest::newRow("ascentThreshold") << 0xCE << 0xFF << -50;
    QTest::newRow("distanceH") << 0xF0 << 0xD8 << -10000;
    QTest::newRow("timerRule08.time") << 0xFF << 0xFF << 65535;
}

void TestFieldCodec::numbers()
{
    QFETCH(int, low);
    QFETCH(int, high);
    const cMySettingsField& field = support::field(QTest::currentDataTag());
    cMyMemoryArea area;
    area.setData(1023, 0);
    area.setData(static_cast<quint32>(field.address),
                 {static_cast<quint8>(low), static_cast<quint8>(high)});
    QTEST(editor::storedNumber(area, field), "number");
}

void TestFieldCodec::numbersComeBack()
{
    cMyMemoryArea area;
    area.setData(1023, 0);
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.encoding == FieldEncoding::Text || field.encoding == FieldEncoding::Bytes) {
            continue;
        }
        const bool isSigned = field.encoding == FieldEncoding::Signed;
        const int count = 1 << (8 * field.width);
        const int first = isSigned ? -count / 2 : 0;
        for (const int number : {first, first + 1, 0, 1, first + count - 1}) {
            area.setData(static_cast<quint32>(field.address), editor::numberBytes(number, field));
            QCOMPARE(editor::storedNumber(area, field), number);
        }
    }
}

void TestFieldCodec::texts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QByteArray(16, '\0') << QString();
    QTest::newRow("up to the first zero") << QByteArray("AB\0CD", 5) << QStringLiteral("AB");
    QTest::newRow("Latin-1") << QByteArray("J\xF3zek\0", 6) << QString::fromUtf8("Józek");
    QTest::newRow("without an end") << QByteArray(20, 'x') << QString(16, QLatin1Char('x'));
    QTest::newRow("erased") << QByteArray(16, '\xFF') << QString(16, QChar(0xFF));
}

void TestFieldCodec::texts()
{
    QFETCH(QByteArray, bytes);
    cMyMemoryArea area;
    area.setData(1023, 0);
    for (int i = 0; i < bytes.size(); ++i) {
        area.setData(static_cast<quint32>(16 + i), static_cast<quint8>(bytes.at(i)));
    }
    QTEST(editor::storedText(area, support::field("author")), "text");
}

void TestFieldCodec::textsToBytes()
{
    const cMySettingsField& author = support::field("author");
    QCOMPARE(editor::textCapacity(author), 15);
    QCOMPARE(editor::textBytes(QStringLiteral("XY"), author), (QVector<quint8>{'X', 'Y', 0}));
    QCOMPARE(editor::textBytes(QString(), author), QVector<quint8>{0});
    QVector<quint8> full(15, 'a');
    full.append(0);
    QCOMPARE(editor::textBytes(QString(15, QLatin1Char('a')), author), full);
    QCOMPARE(editor::textBytes(QString(600, QLatin1Char('a')), author), full);
}

void TestFieldCodec::fieldsByName()
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        QCOMPARE(&editor::settingsField(field.name), &field);
        QVERIFY2(!editor::caption(field).isEmpty(), qPrintable(field.name));
    }
    QCOMPARE(editor::ruleMember(QStringLiteral("messageRule"), 7, QStringLiteral("form")),
             QStringLiteral("messageRule07.form"));
}

void TestFieldCodec::thresholds_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");
    QTest::addColumn<double>("shown");
    QTest::newRow("temperature") << 16 << 125 << 12.5;
    QTest::newRow("depth") << 32 << 32767 << 327.67;
    QTest::newRow("speed") << 48 << -32768 << -327.68;
    QTest::newRow("speed as two unsigned bytes") << 48 << 0x8000 << -327.68;
    QTest::newRow("battery full") << 31 << -32768 << 100.0;
    QTest::newRow("battery a fifth") << 31 << 6554 << 6554 / 327.68;
    QTest::newRow("regardless of any value") << 255 << 1234 << 1234.0;
}

void TestFieldCodec::thresholds()
{
    QFETCH(int, value);
    QFETCH(int, stored);
    const cMyTableModel values(QStringLiteral(":/models/timCb2.csv"));
    const cMyThresholdScale scale = editor::thresholdScale(values, values.rowOfValue(value));
    QTEST(editor::shownThreshold(stored, scale), "shown");
}

void TestFieldCodec::everyStoredThresholdOfOneUnitComesBack()
{
    const cMyTableModel values(QStringLiteral(":/models/timCb2.csv"));
    const cMyThresholdScale scale = editor::thresholdScale(values, values.rowOfValue(48));
    for (int stored = -32768; stored <= 32767; ++stored) {
        QCOMPARE(qRound(editor::shownThreshold(stored, scale) * scale.factor), stored);
    }
    QCOMPARE(editor::shownThreshold(5, cMyThresholdScale()), 0.0);
}

void TestFieldCodec::aPlainUnitHasNoBrackets()
{
    QCOMPARE(editor::plainUnit(QStringLiteral("[m/s]")), QStringLiteral("m/s"));
    QCOMPARE(editor::plainUnit(QStringLiteral("m/s")), QStringLiteral("m/s"));
    QCOMPARE(editor::plainUnit(QString()), QString());
}

void TestFieldCodec::decimals_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("decimals");
    QTest::newRow("whole numbers") << 1.0 << 0;
    QTest::newRow("tenths") << 10.0 << 1;
    QTest::newRow("hundredths") << 100.0 << 2;
    QTest::newRow("battery level") << 327.68 << 2;
    QTest::newRow("gravity, which no table has") << 3276.8 << -1;
    QTest::newRow("nothing") << 0.0 << -1;
}

void TestFieldCodec::decimals()
{
    QFETCH(double, factor);
    QTEST(editor::decimalsOfFactor(factor).value_or(-1), "decimals");
}

void TestFieldCodec::versions_data()
{
    QTest::addColumn<QVector<quint8>>("bytes");
    using Bytes = QVector<quint8>;
    QTest::newRow("1.0.4.0") << Bytes{1, 0, 4, 0};
    QTest::newRow("12.255") << Bytes{12, 255};
    QTest::newRow("1..x") << Bytes{1, 0, 0};
}

void TestFieldCodec::versions()
{
    QTEST(editor::versionBytes(QString::fromLatin1(QTest::currentDataTag())), "bytes");
}

QTEST_GUILESS_MAIN(TestFieldCodec)
#include "test_fieldcodec.moc"
