// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/protocol.h"
#include "device/requests.h"
#include "tests/device/statuslines.h"
#include "tests/device/transferlines.h"
#include "tests/support/template.h"

#include <QtTest>

#include <iterator>

/// What is sent, line by line, against lines written down here.
class TestRequests : public QObject
{
    Q_OBJECT

private slots:
    void transfersOfTheSettings_data();
    void transfersOfTheSettings();
    void memoriesByTheirWords_data();
    void memoriesByTheirWords();
    void anUnknownMemoryHasNoWord();
    void recordsAreSentAsTheyAre();
    void nothingToSend();
    void statusQuery();
    void serviceCommands();
    void wordsOfMemoriesInReplies();
};

namespace {

QStringList settingsRecords()
{
    return QString::fromLatin1(support::settingsText(support::templateImage()))
        .split(QLatin1Char('\n'));
}

QStringList withLineEnds(const QStringList& lines)
{
    QStringList ended;
    for (const QString& line : lines) {
        ended.append(line + QStringLiteral("\r\n"));
    }
    return ended;
}

} // namespace

void TestRequests::transfersOfTheSettings_data()
{
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("direction");
    QTest::newRow("write") << device::writeRequest(EEPROM, settingsRecords())
                           << QStringLiteral("#WRITE");
    QTest::newRow("read") << device::readRequest(EEPROM, settingsRecords())
                          << QStringLiteral("#READ");
}

void TestRequests::transfersOfTheSettings()
{
    QFETCH(QStringList, sent);
    QFETCH(QString, direction);
    QStringList expected{QStringLiteral("#ROOT"), QStringLiteral("#HEX"), QStringLiteral("#EEPROM"),
                         direction};
    for (const char* line : expected::settingsLines) {
        expected.append(QLatin1String(line));
    }
    QCOMPARE(sent, withLineEnds(expected));
    QCOMPARE(sent.size(), 69);
}

void TestRequests::memoriesByTheirWords_data()
{
    QTest::addColumn<int>("area");
    QTest::addColumn<QString>("word");
    QTest::newRow("EEPROM") << 0 << "#EEPROM\r\n";
    QTest::newRow("FLASH") << 1 << "#FLASH\r\n";
    QTest::newRow("OTP") << 2 << "#OTP\r\n";
    QTest::newRow("RAM") << 3 << "#RAM\r\n";
    QTest::newRow("ROM") << 4 << "#ROM\r\n";
}

void TestRequests::memoriesByTheirWords()
{
    QFETCH(int, area);
    QFETCH(QString, word);
    QCOMPARE(device::writeRequest(static_cast<MemoryType>(area), {}).at(2), word);
    QCOMPARE(device::readRequest(static_cast<MemoryType>(area), {}).at(2), word);
}

void TestRequests::anUnknownMemoryHasNoWord()
{
    for (const int area : {5, 6, 255, -1}) {
        const auto type = static_cast<MemoryType>(area);
        QCOMPARE(device::writeRequest(type, {QStringLiteral("x")}),
                 QStringList({QStringLiteral("#ROOT\r\n"), QStringLiteral("#HEX\r\n"),
                              QStringLiteral("#WRITE\r\n"), QStringLiteral("x\r\n")}));
        QCOMPARE(device::readRequest(type, {}),
                 QStringList({QStringLiteral("#ROOT\r\n"), QStringLiteral("#HEX\r\n"),
                              QStringLiteral("#READ\r\n")}));
    }
}

void TestRequests::recordsAreSentAsTheyAre()
{
    const QStringList records{QStringLiteral(":zz"), QString(), QStringLiteral("a b")};
    QCOMPARE(device::writeRequest(FLASH, records).mid(4), withLineEnds(records));
}

void TestRequests::nothingToSend()
{
    QCOMPARE(device::writeRequest(EEPROM, {}).size(), 4);
}

void TestRequests::statusQuery()
{
    QStringList expected;
    for (const char* line : expected::statusLines) {
        expected.append(QLatin1String(line));
    }
    const QStringList sent = device::statusRequest();
    QCOMPARE(sent, withLineEnds(expected));
    QCOMPARE(sent.size(), 93);
    QCOMPARE(sent.filter(QStringLiteral("#")).size(), 40);
    QCOMPARE(sent.filter(QStringLiteral(":00000001FF")).size(), 10);
}

void TestRequests::serviceCommands()
{
    QCOMPARE(device::commandRequest(device::resetWord), QStringList(QStringLiteral("#RESET\r\n")));
    QCOMPARE(device::commandRequest(device::bootWord), QStringList(QStringLiteral("#BOOT\r\n")));
    QCOMPARE(device::commandRequest(device::clearWord), QStringList(QStringLiteral("#CLEAR\r\n")));
    QCOMPARE(device::commandRequest(device::offWord), QStringList(QStringLiteral("#OFF\r\n")));
}

void TestRequests::wordsOfMemoriesInReplies()
{
    QCOMPARE(*device::memoryOfReply(QStringLiteral("#EEPROM\r\n")), EEPROM);
    QCOMPARE(*device::memoryOfReply(QStringLiteral("#ROM\r\n")), ROM);
    for (const char* other : {"#EEPROM", "#EEPROM\n", "#eeprom\r\n", " #EEPROM\r\n", "#READ\r\n",
                              "#\r\n", "", "#EEPROM\r\n "}) {
        QVERIFY2(!device::memoryOfReply(QLatin1String(other)), other);
    }
}

QTEST_GUILESS_MAIN(TestRequests)
#include "test_requests.moc"
