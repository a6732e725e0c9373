// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexrecord.h"

#include <QRandomGenerator>
#include <QtTest>

class TestHexRecord : public QObject
{
    Q_OBJECT

private slots:
    void emptyDataPrintsTheEndOfFileRecord();
    void sixteenZeroBytes();
    void extendedAddressIsWrittenWithCountZero();
    void otherTypesPrintNoData();
    void dataOfOtherTypesIsNotSummed();
    void wrongChecksumIsRejectedAndLowerCaseAccepted();
    void otherStartCodesAreRejected_data();
    void otherStartCodesAreRejected();
    void countOverTheDataIsRejected();
    void addressRecordsAsRead_data();
    void addressRecordsAsRead();
    void textAfterTheChecksumIsIgnored();
    void charactersOutsideAsciiAreNoDigits();
    void whatAFailureLeavesBehind_data();
    void whatAFailureLeavesBehind();
    void qint16NeedsAByteBeyond();
    void qint16IsSignedAndLittleEndian();
    void anyRecordReadsBack();
};

namespace {

QString zeros(int count)
{
    return QString(count, QLatin1Char('0'));
}

} // namespace

void TestHexRecord::emptyDataPrintsTheEndOfFileRecord()
{
    QCOMPARE(cMyHexRecord(0, {}).toString(), QStringLiteral(":00000001FF"));
    const cMyHexRecord record(0x1234, QVector<unsigned char>());
    QCOMPARE(record.toString(), QStringLiteral(":00000001FF"));
    QCOMPARE(int(record.offset()), 0);
    QCOMPARE(int(record.type()), 1);
    QCOMPARE(int(record.checksum()), 0xFF);
}

void TestHexRecord::sixteenZeroBytes()
{
    const cMyHexRecord record(0, QVector<quint8>(16, 0));
    QCOMPARE(record.toString(), QStringLiteral(":10000000") + zeros(32) + QStringLiteral("F0"));
    QVERIFY(cMyHexRecord(0x10, QVector<quint8>(16, 0xAB))
                .toString()
                .startsWith(QStringLiteral(":10001000ABABAB")));
}

void TestHexRecord::extendedAddressIsWrittenWithCountZero()
{
    QCOMPARE(cMyHexRecord(1).toString(), QStringLiteral(":000000040001FB"));
    QCOMPARE(cMyHexRecord(0xFFFF).toString(), QStringLiteral(":00000004FFFFFE"));
    QCOMPARE(int(cMyHexRecord(1).type()), 4);
    QVERIFY(cMyHexRecord(1).data().isEmpty());
}

void TestHexRecord::otherTypesPrintNoData()
{
    cMyHexRecord record;
    QVERIFY(record.fromString(QStringLiteral(":0212340512345B5")) == false);
    QVERIFY(record.fromString(QStringLiteral(":021234051122B5")));
    QCOMPARE(record.data(), (QVector<quint8>{0x11, 0x22}));
    QCOMPARE(record.toString(), QStringLiteral(":02123405B5"));
}

void TestHexRecord::dataOfOtherTypesIsNotSummed()
{
    cMyHexRecord record;
    QVERIFY(record.fromString(QStringLiteral(":02000001AABBFF")));
    QCOMPARE(record.toString(), QStringLiteral(":02000001AABBFF"));
    QVERIFY(!record.fromString(QStringLiteral(":02000001AABB98")));
}

void TestHexRecord::wrongChecksumIsRejectedAndLowerCaseAccepted()
{
    const QString line = QStringLiteral(":10ABC000") + zeros(32);
    cMyHexRecord record;
    QVERIFY(record.fromString(line + QStringLiteral("85")));
    QVERIFY(!record.fromString(line + QStringLiteral("86")));
    QVERIFY(record.fromString((line + QStringLiteral("85")).toLower()));
    QCOMPARE(int(record.offset()), 0xABC0);
    QCOMPARE(record.data(), QVector<quint8>(16, 0));
}

void TestHexRecord::otherStartCodesAreRejected_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("comment") << QStringLiteral(";00000001FF");
    QTest::newRow("blank") << QStringLiteral(" :00000001FF");
    QTest::newRow("blank for the colon") << QStringLiteral(" 00000001FF");
    QTest::newRow("full-width colon") << QString(QChar(0xFF1A)) + QStringLiteral("00000001FF");
    QTest::newRow("none") << QStringLiteral("00000001FF");
    QTest::newRow("empty") << QString();
}

void TestHexRecord::otherStartCodesAreRejected()
{
    QFETCH(QString, line);
    QVERIFY(!cMyHexRecord().fromString(line));
}

void TestHexRecord::countOverTheDataIsRejected()
{
    QVERIFY(!cMyHexRecord().fromString(QStringLiteral(":10000000") + zeros(20)));
    QVERIFY(
        !cMyHexRecord().fromString(QStringLiteral(":10000000") + zeros(20) + QStringLiteral("F0")));
}

void TestHexRecord::addressRecordsAsRead_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("our own form, segment 1") << QStringLiteral(":000000040001FB") << false;
    QTest::newRow("our own form, segment 0") << QStringLiteral(":000000040000FC") << false;
    QTest::newRow("public form, segment 1") << QStringLiteral(":020000040001F9") << false;
    QTest::newRow("public form, segment 0") << QStringLiteral(":020000040000FA") << false;
    QTest::newRow("the sum of a record without segment")
        << QStringLiteral(":020000041234FC") << true;
}

void TestHexRecord::addressRecordsAsRead()
{
    QFETCH(QString, line);
    QFETCH(bool, isRead);
    QCOMPARE(cMyHexRecord().fromString(line), isRead);
}

void TestHexRecord::textAfterTheChecksumIsIgnored()
{
    cMyHexRecord record;
    QVERIFY(record.fromString(QStringLiteral(":0100200042 9D").remove(QLatin1Char(' ')) +
                              QStringLiteral("\r\n:junk")));
    QCOMPARE(record.data(), QVector<quint8>{0x42});
    QVERIFY(record.fromString(QStringLiteral(":00000001FF") + QString(100000, QLatin1Char('x'))));
}

void TestHexRecord::charactersOutsideAsciiAreNoDigits()
{
    const QString line = QStringLiteral(":010020004"
                                        "29D");
    QVERIFY(cMyHexRecord().fromString(line));
    for (int position = 1; position < line.size(); ++position) {
        QString changed = line;
        // Full-width digits and a character whose low byte is a digit.
        changed[position] = QChar(0xFF10 + line.at(position).digitValue());
        QVERIFY(!cMyHexRecord().fromString(changed));
        changed[position] = QChar(0x0100 + line.at(position).unicode());
        QVERIFY(!cMyHexRecord().fromString(changed));
        changed[position] = QChar::Null;
        QVERIFY(!cMyHexRecord().fromString(changed));
    }
}

void TestHexRecord::whatAFailureLeavesBehind_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVector<quint8>>("data");
    const QVector<quint8> before = {0x42};
    QTest::newRow("count") << QStringLiteral(":xx123400") << 0x20 << 0 << before;
    QTest::newRow("start code") << QStringLiteral(";01123400") << 0x20 << 0 << before;
    QTest::newRow("type") << QStringLiteral(":011234xx") << 0x20 << 0 << before;
    QTest::newRow("data") << QStringLiteral(":021234001x") << 0x1234 << 0 << QVector<quint8>();
    QTest::newRow("later data") << QStringLiteral(":0212340511xx") << 0x1234 << 5
                                << QVector<quint8>{0x11};
    QTest::newRow("short") << QStringLiteral(":0312340511227") << 0x1234 << 5
                           << QVector<quint8>{0x11, 0x22, 0x07};
    QTest::newRow("checksum") << QStringLiteral(":011234003300") << 0x1234 << 0
                              << QVector<quint8>{0x33};
}

void TestHexRecord::whatAFailureLeavesBehind()
{
    QFETCH(QString, line);
    QFETCH(int, offset);
    QFETCH(int, type);
    QFETCH(QVector<quint8>, data);
    cMyHexRecord record(0x20, {0x42});
    QVERIFY(!record.fromString(line));
    QCOMPARE(int(record.offset()), offset);
    QCOMPARE(int(record.type()), type);
    QCOMPARE(record.data(), data);
}

void TestHexRecord::qint16NeedsAByteBeyond()
{
    QVector<quint8> data(16, 0x11);
    data[13] = 0x34;
    data[14] = 0x12;
    const cMyHexRecord record(0, data);
    QCOMPARE(record.getQint16(13), qint16(0x1234));
    QCOMPARE(record.getQint16(14), qint16(0));
    QCOMPARE(record.getQint16(15), qint16(0));
    QCOMPARE(record.getQint16(255), qint16(0));
    QCOMPARE(cMyHexRecord(0, {0x34, 0x12}).getQint16(0), qint16(0));
    QCOMPARE(cMyHexRecord(0, {0x34, 0x12, 0}).getQint16(0), qint16(0x1234));
    QCOMPARE(cMyHexRecord().getQint16(0), qint16(0));
}

void TestHexRecord::qint16IsSignedAndLittleEndian()
{
    QCOMPARE(cMyHexRecord(0, {0x00, 0x80, 0}).getQint16(0), qint16(-32768));
    QCOMPARE(cMyHexRecord(0, {0xFF, 0xFF, 0}).getQint16(0), qint16(-1));
    QCOMPARE(cMyHexRecord(0, {0xFF, 0x7F, 0}).getQint16(0), qint16(32767));
}

void TestHexRecord::anyRecordReadsBack()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    for (int round = 0; round < 2000; ++round) {
        QVector<quint8> data(static_cast<int>(random.bounded(256)));
        for (quint8& byte : data) {
            byte = static_cast<quint8>(random.generate());
        }
        const cMyHexRecord written(static_cast<unsigned short>(random.generate()), data);
        cMyHexRecord read;
        QVERIFY2(read.fromString(written.toString()), qPrintable(QString::number(seed)));
        QCOMPARE(read.offset(), written.offset());
        QCOMPARE(read.type(), written.type());
        QCOMPARE(read.data(), written.data());
        QCOMPARE(read.toString(), written.toString());
    }
}

QTEST_GUILESS_MAIN(TestHexRecord)
#include "test_hexrecord.moc"
