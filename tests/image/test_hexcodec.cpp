// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexcodec.h"

#include <QByteArray>
#include <QtTest>

class TestHexCodec : public QObject
{
    Q_OBJECT

private slots:
    void everyCharacterAsADigit();
    void faultsInTheOrderOfTheFields_data();
    void faultsInTheOrderOfTheFields();
    void aLastSingleDigitIsAByte();
    void bytesBeforeAFaultAreKept();
    void standardChecksumSumsTheCount();
    void longestRecordFits();
    void cutAnywhereIsNeverRead();
};

namespace {

image::RecordFault decode(const QByteArray& text, cMyRecordFields& fields)
{
    return image::decodeRecord({text.constData(), static_cast<std::size_t>(text.size())}, fields);
}

} // namespace

void TestHexCodec::everyCharacterAsADigit()
{
    const QByteArray digits = "0123456789ABCDEFabcdef";
    for (int character = 0; character < 256; ++character) {
        const QByteArray text = ":0000000" + QByteArray(1, static_cast<char>(character)) + "00";
        cMyRecordFields fields;
        const image::RecordFault fault = decode(text, fields);
        if (digits.contains(static_cast<char>(character))) {
            QCOMPARE(fault, image::RecordFault::None);
            QCOMPARE(int(fields.type),
                     QByteArray(1, static_cast<char>(character)).toInt(nullptr, 16));
        } else {
            QCOMPARE(fault, image::RecordFault::Header);
        }
    }
}

void TestHexCodec::faultsInTheOrderOfTheFields_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("fault");
    const auto row = [](const char* name, const QByteArray& text, image::RecordFault fault) {
        QTest::newRow(name) << text << static_cast<int>(fault);
    };
    using image::RecordFault;
    row("empty", "", RecordFault::Count);
    row("start code alone", ":", RecordFault::Count);
    row("count before start code", ";G0000001FF", RecordFault::Count);
    row("start code before offset", ";00000G01FF", RecordFault::StartCode);
    row("leading blank", " 00000001FF", RecordFault::StartCode);
    row("sign in the count", ":+0000001FF", RecordFault::Count);
    row("blank in the count", ": 0000001FF", RecordFault::Count);
    row("prefix in the offset", ":000x0001FF", RecordFault::Header);
    row("no type", ":000000", RecordFault::Header);
    row("type before data", ":01000GG1GG", RecordFault::Header);
    row("a last single character that is no digit", ":0200000001G", RecordFault::Data);
    row("data before checksum", ":01000000GGGG", RecordFault::Data);
    row("no checksum", ":00000001", RecordFault::Checksum);
    row("one digit of the type", ":0000000", RecordFault::Checksum);
    row("bad checksum digit", ":00000001FG", RecordFault::Checksum);
    row("count over the data", ":1000000000000000000000", RecordFault::Checksum);
    row("NUL in the data", QByteArray(":01000000\0\0FF", 13), RecordFault::Data);
    row("wrong sum is not looked at", ":0000000100", RecordFault::None);
    row("one digit of the checksum", ":00000001F", RecordFault::None);
    row("text behind", ":00000001FF;x", RecordFault::None);
}

void TestHexCodec::faultsInTheOrderOfTheFields()
{
    QFETCH(QByteArray, text);
    QFETCH(int, fault);
    cMyRecordFields fields;
    QCOMPARE(static_cast<int>(decode(text, fields)), fault);
}

void TestHexCodec::aLastSingleDigitIsAByte()
{
    cMyRecordFields fields;
    QCOMPARE(decode(":03000000AB1", fields), image::RecordFault::Checksum);
    QCOMPARE(fields.size, 2);
    QCOMPARE(int(fields.data[0]), 0xAB);
    QCOMPARE(int(fields.data[1]), 0x01);
}

void TestHexCodec::bytesBeforeAFaultAreKept()
{
    cMyRecordFields fields;
    QCOMPARE(decode(":04123405112233xx00", fields), image::RecordFault::Data);
    QCOMPARE(int(fields.offset), 0x1234);
    QCOMPARE(int(fields.type), 5);
    QCOMPARE(fields.size, 3);
    QCOMPARE(int(fields.data[2]), 0x33);
}

void TestHexCodec::standardChecksumSumsTheCount()
{
    cMyRecordFields fields;
    QCOMPARE(decode(":020000040001F9", fields), image::RecordFault::None);
    QCOMPARE(int(image::standardChecksum(fields)), 0xF9);
    QVERIFY(!image::isChecksumRight(fields));
}

void TestHexCodec::longestRecordFits()
{
    const QByteArray text = ":FF000000" + QByteArray(2 * 255, '5') + "00";
    QCOMPARE(text.size(), image::maxRecordText);
    cMyRecordFields fields;
    QCOMPARE(decode(text, fields), image::RecordFault::None);
    QCOMPARE(fields.size, 255);
    QCOMPARE(int(fields.data[254]), 0x55);
}

void TestHexCodec::cutAnywhereIsNeverRead()
{
    const QByteArray whole = ":0401F200DEADBEEFD1";
    cMyRecordFields fields;
    QCOMPARE(decode(whole, fields), image::RecordFault::None);
    QVERIFY(image::isChecksumRight(fields));
    for (int length = 0; length < whole.size(); ++length) {
        // On the heap and exact in length, so that a read past the end shows under a sanitizer.
        const std::unique_ptr<char[]> cut(new char[static_cast<std::size_t>(length)]);
        std::copy_n(whole.constData(), length, cut.get());
        const auto fault =
            image::decodeRecord({cut.get(), static_cast<std::size_t>(length)}, fields);
        QVERIFY(fault != image::RecordFault::None || !image::isChecksumRight(fields));
    }
}

QTEST_GUILESS_MAIN(TestHexCodec)
#include "test_hexcodec.moc"
