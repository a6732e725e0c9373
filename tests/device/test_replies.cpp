// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "image/hexrecord.h"

#include <QtTest>

/// What the answers of the device say.
class TestReplies : public QObject
{
    Q_OBJECT

private slots:
    void recordsBelongToTheMemoryNamedLast();
    void recordsBeforeAnyMemoryAreSettings();
    void everythingElseSaysNothing();
    void damagedRecordsAreDropped();
    void allStatusTexts();
    void selfTestFlags_data();
    void selfTestFlags();
    void depths_data();
    void depths();
    void diveTimes_data();
    void diveTimes();
    void countersAreUnsigned();
    void versions();
    void textsEndAtAZeroByteOrTheirField();
    void erasedMemoryShowsAsItIs();
    void arrivalOrderCountsAndNotTheAddress();
    void nothingArrived();
    void shortBuffers();
};

namespace {

QString record(int address, const QByteArray& bytes)
{
    const QVector<quint8> data(bytes.cbegin(), bytes.cend());
    return cMyHexRecord(static_cast<unsigned short>(address), data).toString() +
           QStringLiteral("\r\n");
}

QStringList memory(const char* word, std::initializer_list<QByteArray> records)
{
    QStringList replies{QStringLiteral("#ROOT\r\n"), QStringLiteral("#HEX\r\n"),
                        QString::fromLatin1(word) + QStringLiteral("\r\n"),
                        QStringLiteral("#READ\r\n")};
    for (const QByteArray& bytes : records) {
        replies.append(record(0, bytes));
    }
    return replies << QStringLiteral(":00000001FF\r\n");
}

/// A device's RAM: greatest depth, dive time and flags, as they are asked for.
QStringList ram(int depth, int seconds, int flags)
{
    const auto number = [](int value) {
        return QByteArray(1, static_cast<char>(value)) +
               QByteArray(1, static_cast<char>(value >> 8));
    };
    return memory("#RAM",
                  {number(depth), number(seconds), QByteArray(1, static_cast<char>(flags))});
}

QByteArray padded(const QByteArray& text, int size)
{
    return text + QByteArray(size - text.size(), '\0');
}

} // namespace

void TestReplies::recordsBelongToTheMemoryNamedLast()
{
    const auto records = device::readRecords(memory("#FLASH", {"ab"}) + memory("#ROM", {"c", "d"}));
    QCOMPARE(records.size(), 3);
    QCOMPARE(records.at(0).area, FLASH);
    QCOMPARE(records.at(0).data, QVector<quint8>({'a', 'b'}));
    QCOMPARE(records.at(1).area, ROM);
    QCOMPARE(records.at(2).area, ROM);
    QCOMPARE(records.at(2).data, QVector<quint8>({'d'}));
    QCOMPARE(device::readRecords({record(0x1234, "x")}).at(0).address, quint16(0x1234));
}

void TestReplies::recordsBeforeAnyMemoryAreSettings()
{
    QCOMPARE(device::readRecords({record(16, "x")}).at(0).area, EEPROM);
}

void TestReplies::everythingElseSaysNothing()
{
    const QStringList replies{QString(),
                              QStringLiteral("\r\n"),
                              QStringLiteral("#READ\r\n"),
                              QStringLiteral("?\r\n"),
                              QStringLiteral(":00000001FF\r\n"),
                              QStringLiteral(" ") + record(0, "x"),
                              QStringLiteral("!note\r\n")};
    QVERIFY(device::readRecords(replies).isEmpty());
}

void TestReplies::damagedRecordsAreDropped()
{
    QString damaged = record(0, "abcd");
    damaged[10] = damaged.at(10) == QLatin1Char('1') ? QLatin1Char('2') : QLatin1Char('1');
    const auto records =
        device::readRecords({record(0, "x"), damaged, QStringLiteral(":\r\n"),
                             QStringLiteral(":0\r\n"), QStringLiteral(":zz\r\n"), record(1, "y")});
    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(1).address, quint16(1));
}

void TestReplies::allStatusTexts()
{
    const QStringList replies =
        memory("#EEPROM", {QByteArray("\1\0\4\0", 4)}) +
        memory("#EEPROM", {padded("Author", 16), padded("A title of more", 16), padded("", 16)}) +
        memory("#EEPROM", {padded("Text", 512).left(16), QByteArray(255, '\0')}) +
        memory("#FLASH", {padded("English", 16)}) +
        memory("#FLASH", {QByteArray("\2\3\xFF\0", 4)}) +
        memory("#OTP", {QByteArray("\x39\x30\1\2\3\4\x08", 7)}) + ram(1840, 2345, 0x01) +
        memory("#ROM", {QByteArray("\1\2\3\4", 4)});
    QCOMPARE(device::statusTexts(replies),
             QStringList({QStringLiteral("1"), QStringLiteral("18.4 m"), QStringLiteral("39:05"),
                          QStringLiteral("12345"), QStringLiteral("1.2.3.4"), QStringLiteral("8"),
                          QStringLiteral("1.2.3.4"), QStringLiteral("English"),
                          QStringLiteral("2.3.255.0"), QStringLiteral("1.0.4.0"),
                          QStringLiteral("Author"), QStringLiteral("A title of more"),
                          QStringLiteral("Text")}));
}

void TestReplies::selfTestFlags_data()
{
    QTest::addColumn<int>("flags");
    QTest::newRow("works") << 0x01;
    QTest::newRow("two faults") << 0x82;
    QTest::newRow("all") << 0xFF;
}

void TestReplies::selfTestFlags()
{
    QFETCH(int, flags);
    QCOMPARE(device::statusTexts(ram(0, 0, flags)).at(device::SelfTestFlags),
             QString::number(flags));
}

void TestReplies::depths_data()
{
    QTest::addColumn<int>("centimetres");
    QTest::addColumn<QString>("text");
    QTest::newRow("rounded") << 12345 << "123.5 m";
    QTest::newRow("none") << 0 << "0.0 m";
    QTest::newRow("whole") << 500 << "5.0 m";
    QTest::newRow("unsigned") << 65535 << "655.4 m";
}

void TestReplies::depths()
{
    QFETCH(int, centimetres);
    QFETCH(QString, text);
    for (const QLocale& locale : {QLocale::c(), QLocale(QLocale::Polish)}) {
        QLocale::setDefault(locale);
        QCOMPARE(device::statusTexts(ram(centimetres, 0, 1)).at(device::MaximumDepth), text);
    }
    QLocale::setDefault(QLocale::system());
}

void TestReplies::diveTimes_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << "0:00";
    QTest::newRow("seconds") << 65 << "1:05";
    QTest::newRow("minutes") << 307 << "5:07";
    QTest::newRow("last without hours") << 3599 << "59:59";
    QTest::newRow("first with hours") << 3600 << "1:00:00";
    QTest::newRow("hours") << 3723 << "1:02:03";
    QTest::newRow("most") << 65535 << "18:12:15";
}

void TestReplies::diveTimes()
{
    QFETCH(int, seconds);
    QFETCH(QString, text);
    QCOMPARE(device::statusTexts(ram(0, seconds, 1)).at(device::DiveTime), text);
}

void TestReplies::countersAreUnsigned()
{
    const auto otp = memory("#OTP", {QByteArray("\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 7)});
    const QStringList texts = device::statusTexts(otp);
    QCOMPARE(texts.at(device::SerialNumber), QStringLiteral("65535"));
    QCOMPARE(texts.at(device::HardwareVersion), QStringLiteral("255.255.255.255"));
    QCOMPARE(texts.at(device::MemorySize), QStringLiteral("255"));
}

void TestReplies::versions()
{
    const auto texts = device::statusTexts(memory("#ROM", {"\1\2\3\4", "\5"}));
    QCOMPARE(texts.at(device::FirmwareVersion), QStringLiteral("1.2.3.4.5"));
}

void TestReplies::textsEndAtAZeroByteOrTheirField()
{
    const QByteArray author("sixteen letters!"); // as many as the field has
    const QByteArray title("Title\0hidden", 12);
    const auto texts =
        device::statusTexts(memory("#EEPROM", {QByteArray(4, '\1'), author, padded(title, 16),
                                               padded("", 16), QByteArray("J\xF3zef\xE9", 7)}));
    QCOMPARE(texts.at(device::SettingsAuthor), QStringLiteral("sixteen letters!"));
    QCOMPARE(texts.at(device::SettingsTitle), QStringLiteral("Title"));
    QCOMPARE(texts.at(device::SettingsDescription), QStringLiteral("Józefé"));
}

void TestReplies::erasedMemoryShowsAsItIs()
{
    const auto texts =
        device::statusTexts(memory("#FLASH", {QByteArray(16, '\xFF'), QByteArray(4, '\xFF')}) +
                            memory("#EEPROM", {QByteArray(52, '\xFF'), QByteArray(255, '\xFF'),
                                               QByteArray(255, '\xFF'), QByteArray(2, '\xFF')}));
    const auto erased = [](int count) {
        return QString(count, QChar(0xFF));
    };
    QCOMPARE(texts.at(device::VoiceLanguage), erased(16));
    QCOMPARE(texts.at(device::VoiceVersion), QStringLiteral("255.255.255.255"));
    QCOMPARE(texts.at(device::SettingsAuthor), erased(16));
    QCOMPARE(texts.at(device::SettingsTitle), erased(32));
    QCOMPARE(texts.at(device::SettingsDescription), erased(512));
}

void TestReplies::arrivalOrderCountsAndNotTheAddress()
{
    QStringList replies{QStringLiteral("#OTP\r\n"), record(500, QByteArray("\1\0\2\3", 4)),
                        record(3, QByteArray("\4\5\6", 3))};
    const auto texts = device::statusTexts(replies);
    QCOMPARE(texts.at(device::SerialNumber), QStringLiteral("1"));
    QCOMPARE(texts.at(device::HardwareVersion), QStringLiteral("2.3.4.5"));
    QCOMPARE(texts.at(device::MemorySize), QStringLiteral("6"));
}

void TestReplies::nothingArrived()
{
    const QString none;
    QCOMPARE(device::statusTexts({}),
             QStringList({QStringLiteral("0"), QStringLiteral("0.0 m"), QStringLiteral("0:00"),
                          QStringLiteral("0"), none, QStringLiteral("0"), none, none, none, none,
                          none, none, none}));
    QCOMPARE(device::statusTexts({}).size(), static_cast<int>(device::StatusTextCount));
}

void TestReplies::shortBuffers()
{
    const auto texts = device::statusTexts(memory("#RAM", {QByteArray("9", 1)}) +
                                           memory("#EEPROM", {QByteArray("\1\2Auth", 6)}));
    QCOMPARE(texts.at(device::MaximumDepth), QStringLiteral("0.6 m"));
    QCOMPARE(texts.at(device::SelfTestFlags), QStringLiteral("0"));
    QCOMPARE(texts.at(device::SettingsVersion), QStringLiteral("1.2.65.117"));
    QCOMPARE(texts.at(device::SettingsAuthor), QStringLiteral("th"));
    QCOMPARE(texts.at(device::SettingsTitle), QString());
}

QTEST_GUILESS_MAIN(TestReplies)
#include "test_replies.moc"
