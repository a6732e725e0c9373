// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fileposition.h"

#include "image/memoryarea.h"

#include <QtTest>

#include <limits>

/// Numbers to bytes.
class TestFilePosition : public QObject
{
    Q_OBJECT

private slots:
    void bytesOfANumber_data();
    void bytesOfANumber();
    void anUnknownLengthWritesNothing();
    void everyByteAndEveryPairComesBack();
    void anEmptyBindingPointsToTheBeginning();
    void differsFromWhatIsStored();
};

void TestFilePosition::bytesOfANumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("length");
    QTest::addColumn<QVector<quint8>>("bytes");
    using Bytes = QVector<quint8>;
    QTest::newRow("2.5 rounds up") << 2.5 << 0 << Bytes{0x03};
    QTest::newRow("-2.5 rounds down") << -2.5 << 0 << Bytes{0xFD};
    QTest::newRow("2.4") << 2.4 << 0 << Bytes{0x02};
    QTest::newRow("-0.4 is zero") << -0.4 << 0 << Bytes{0x00};
    QTest::newRow("-50 in two bytes") << -50.0 << 1 << Bytes{0xCE, 0xFF};
    QTest::newRow("300 loses its high bits") << 300.0 << 0 << Bytes{0x2C};
    QTest::newRow("low byte first") << 4660.0 << 1 << Bytes{0x34, 0x12};
    QTest::newRow("battery 100 %") << 32768.0 << 1 << Bytes{0x00, 0x80};
    QTest::newRow("70000 loses its high bits") << 70000.0 << 1 << Bytes{0x70, 0x11};
    QTest::newRow("too large for any integer") << 1e300 << 1 << Bytes{0xFF, 0xFF};
    QTest::newRow("too small for any integer") << -1e300 << 1 << Bytes{0x00, 0x00};
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1
                               << Bytes{0x00, 0x00};
}

void TestFilePosition::bytesOfANumber()
{
    QFETCH(double, value);
    QFETCH(int, length);
    QFETCH(QVector<quint8>, bytes);
    cMyMemoryArea area;
    for (const DataType type : {TypeUnsigned, TypeSigned}) {
        cMyFilePosition position;
        position.setFilePosition(&area, 7, static_cast<DataLength>(length), type);
        QCOMPARE(position.dataToFile(value), bytes);
        QCOMPARE(position.filePosition(), 7U);
    }
}

void TestFilePosition::anUnknownLengthWritesNothing()
{
    cMyMemoryArea area;
    for (const int length : {2, -1, 255}) {
        cMyFilePosition position;
        position.setFilePosition(&area, 0, static_cast<DataLength>(length), TypeUnsigned);
        QCOMPARE(position.dataToFile(1), QVector<quint8>());
    }
}

void TestFilePosition::everyByteAndEveryPairComesBack()
{
    cMyMemoryArea area;
    cMyFilePosition byte;
    byte.setFilePosition(&area, 0, Length8, TypeSigned);
    for (int number = -128; number <= 255; ++number) {
        QCOMPARE(byte.dataToFile(number), QVector<quint8>{static_cast<quint8>(number)});
    }
    cMyFilePosition pair;
    pair.setFilePosition(&area, 0, Length16, TypeSigned);
    for (int number = -32768; number <= 65535; ++number) {
        const QVector<quint8> bytes = pair.dataToFile(number);
        QCOMPARE(bytes.at(0) | (bytes.at(1) << 8), number & 0xFFFF);
    }
}

void TestFilePosition::anEmptyBindingPointsToTheBeginning()
{
    const cMyFilePosition position;
    QCOMPARE(position.filePosition(), 0U);
    QVERIFY(!position.differsFrom({1}));
}

void TestFilePosition::differsFromWhatIsStored()
{
    cMyMemoryArea area;
    area.setData(10, {1, 2});
    cMyFilePosition position;
    position.setFilePosition(&area, 10, Length16, TypeUnsigned);
    QVERIFY(!position.differsFrom({1, 2}));
    QVERIFY(position.differsFrom({1, 3}));
    QVERIFY(position.differsFrom({2, 2}));
}

QTEST_GUILESS_MAIN(TestFilePosition)
#include "test_fileposition.moc"
