// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/virtualdevice.h"

#include "device/replies.h"
#include "device/requests.h"
#include "tests/emulator/devicelines.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QTemporaryDir>
#include <QtTest>

class TestVirtualDevice : public QObject
{
    Q_OBJECT

private slots:
    void exchanges_data();
    void exchanges();
    void hostileLinesChangeNothing_data();
    void hostileLinesChangeNothing();
    void everyLineEndIsTaken();
    void settingsAreTheDefaultImage();
    void settingsAreReadAsTheyLie();
    void settingsAreWritten();
    void flashBehindTheFirstPage_data();
    void flashBehindTheFirstPage();
    void memoriesBehindTheirEnds_data();
    void memoriesBehindTheirEnds();
    void statusIsThatOfADeviceThatHasDived();
    void longestDiveIsShownTwice();
    void clearingSparesFlagsAndSurfacePressure();
    void resetKeepsMemoriesAndLeavesModes();
    void bootIsAskedFor();
    void simulationStartsOnce();
    void aSimulationExchangesRecordsAtOnce();
    void offTakesEffectWhenUnplugged();
    void unpluggingAloneKeepsRam();
    void serialNumbers();
    void memoriesAreSetWholly();
    void settingsFiles();
};

using support::ask;
using support::askAll;
using support::record;

namespace {

const QByteArray notUnderstood = "?\r\n";

QList<QByteArray> allMemories(const cMyVirtualDevice& device)
{
    return {device.memory(EEPROM), device.memory(FLASH), device.memory(OTP), device.memory(RAM),
            device.memory(ROM)};
}

} // namespace

void TestVirtualDevice::exchanges_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("reply");
    const auto row = [](const char* name, const char* lines, const char* reply) {
        QTest::newRow(name) << QByteArray(lines) << QByteArray(reply);
    };
    for (const char* word : {"#ROOT", "#HEX", "#EEPROM", "#FLASH", "#OTP", "#RAM", "#ROM", "#READ",
                             "#WRITE", "#SIMUL", "#CLEAR", "#OFF", "#BOOT", "#RESET"}) {
        row(word, word, word);
        const QByteArray inAMode = QByteArray("#ROOT #HEX #RAM #READ ") + word;
        QTest::newRow((QByteArray("in a mode ") + word).constData()) << inAMode << QByteArray(word);
    }
    row("unknown word", "#EEPROM1", "?");
    row("lower case word", "#root", "?");
    row("no mark", "ROOT", "?");
    row("record without hex mode", "#ROOT #EEPROM #READ :0100000000FF", "?");
    row("record without a memory", "#ROOT #HEX #READ :0100000000FF", "?");
    row("record without a direction", "#ROOT #HEX #EEPROM :0100000000FF", "?");
    row("read", "#ROOT #HEX #EEPROM #READ :0100000000FF", ":0100000001FE");
    row("read in another order", "#ROOT #READ #EEPROM #HEX :0100000000FF", ":0100000001FE");
    row("root forgets hex mode", "#HEX #EEPROM #READ #ROOT #EEPROM #READ :0100000000FF", "?");
    row("root forgets the memory", "#HEX #EEPROM #READ #ROOT #HEX #READ :0100000000FF", "?");
    row("root forgets the direction", "#HEX #EEPROM #READ #ROOT #HEX #EEPROM :0100000000FF", "?");
    row("lower case digits", "#HEX #EEPROM #READ :0100e000001f", ":0100E000001F");
    row("end of file", "#HEX #EEPROM #READ :00000001FF", ":00000001FF");
    row("end of file when writing", "#HEX #RAM #WRITE :00000001FF", ":00000001FF");
    row("end of file with an offset", "#HEX #EEPROM #READ :00000101FE", "?");
    row("end of file with data", "#HEX #EEPROM #READ :0100000100FF", "?");
    row("bad sum", "#HEX #EEPROM #READ :0100000000FE", "?");
    row("bad sum when writing", "#HEX #EEPROM #WRITE :0100000000FE", "?");
    row("unknown type", "#HEX #EEPROM #READ :00000002FE", "?");
    row("no bytes", "#HEX #EEPROM #READ :0000000000", ":0000000000");
    row("written", "#HEX #RAM #WRITE :02001000ABCD76", ":02001000ABCD76");
    row("written to OTP", "#HEX #OTP #WRITE :0100000000FF", "?");
    row("written to ROM", "#HEX #ROM #WRITE :0100000000FF", "?");
    row("public segment", "#HEX #FLASH #READ :020000040001F9", ":020000040001F9");
    row("short segment", "#HEX #FLASH #READ :000000040001FB", ":000000040001FB");
    row("public segment with the short sum", "#HEX #FLASH #READ :020000040001FB", "?");
    row("short segment with the public sum", "#HEX #FLASH #READ :000000040001F9", "?");
    row("segment of one byte", "#HEX #FLASH #READ :0100000401FA", "?");
    row("segment without bytes", "#HEX #FLASH #READ :00000004FC", "?");
}

void TestVirtualDevice::exchanges()
{
    QFETCH(QByteArray, lines);
    QFETCH(QByteArray, reply);
    cMyVirtualDevice device;
    QCOMPARE(askAll(device, lines), reply);
}

void TestVirtualDevice::hostileLinesChangeNothing_data()
{
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char* name, const QByteArray& line) {
        QTest::newRow(name) << line;
    };
    row("nothing", "");
    row("line end alone", "\r\n");
    row("blank", " \r\n");
    row("start code", ":\r\n");
    row("mark", "#\r\n");
    row("word with a blank", "#ROOT \r\n");
    row("two words", "#ROOT#ROOT\r\n");
    row("5000 characters", QByteArray(5000, 'A') + "\r\n");
    row("5000 characters of a record", ":" + QByteArray(5000, 'F') + "\r\n");
    row("record that says more than it has", ":10000000FF01\r\n");
    row("record that has more than it says", ":0100000000FF00\r\n");
    row("text behind the record", ":0100000000FF;\r\n");
    row("one digit of the sum", ":01000000F0F"); // 0x0F is right if one digit counts as a sum
    row("binary", QByteArray::fromHex("00018081fe0aff0d00") + "\r\n");
    row("binary behind a start code", ":" + QByteArray::fromHex("80ff00017f") + "\r\n");
    row("no hex digits", ":0G00000000FF\r\n");
}

void TestVirtualDevice::hostileLinesChangeNothing()
{
    QFETCH(QByteArray, line);
    cMyVirtualDevice device;
    askAll(device, "#ROOT #HEX #EEPROM #WRITE");
    const QList<QByteArray> before = allMemories(device);
    QCOMPARE(device.answer(line), notUnderstood);
    QCOMPARE(allMemories(device), before);
    QCOMPARE(ask(device, ":01000000AA55"), QByteArray(":01000000AA55"));
    QCOMPARE(device.memory(EEPROM).at(0), '\xAA');
}

void TestVirtualDevice::everyLineEndIsTaken()
{
    cMyVirtualDevice device;
    for (const char* end : {"", "\n", "\r", "\r\n"}) {
        QCOMPARE(device.answer(QByteArray("#ROOT") + end), QByteArray("#ROOT\r\n"));
    }
    QCOMPARE(device.answer("#ROOT\n\r\n"), notUnderstood);
}

void TestVirtualDevice::settingsAreTheDefaultImage()
{
    const cMyVirtualDevice device;
    QCOMPARE(device.memory(EEPROM), support::templateImage());
}

void TestVirtualDevice::settingsAreReadAsTheyLie()
{
    cMyVirtualDevice device;
    askAll(device, "#ROOT #HEX #EEPROM #READ");
    const QByteArray image = support::templateImage();
    for (int address = 0; address < image.size(); address += 16) {
        QCOMPARE(ask(device, record(address, QByteArray(16, '\x55'))),
                 record(address, image.mid(address, 16)));
    }
    QCOMPARE(device.memory(EEPROM), image);
}

void TestVirtualDevice::settingsAreWritten()
{
    cMyVirtualDevice device;
    const QByteArray last = record(1008, "sixteen letters!");
    QCOMPARE(askAll(device, "#ROOT #HEX #EEPROM #WRITE " + last.toLower()), last.toLower());
    QCOMPARE(ask(device, record(1009, "sixteen letters!")), QByteArray("?"));
    QByteArray image = support::templateImage();
    image.replace(1008, 16, "sixteen letters!");
    QCOMPARE(device.memory(EEPROM), image);
    QCOMPARE(askAll(device, "#READ " + record(1008, QByteArray(16, '\0'))), last);
}

void TestVirtualDevice::flashBehindTheFirstPage_data()
{
    QTest::addColumn<QByteArray>("segment");
    QTest::newRow("public") << QByteArray(":02000004007F7B");
    QTest::newRow("short") << QByteArray(":00000004007F7D");
}

void TestVirtualDevice::flashBehindTheFirstPage()
{
    QFETCH(QByteArray, segment);
    cMyVirtualDevice device;
    constexpr int end = 8 * 1024 * 1024;
    const QByteArray bytes = record(0xFFFE, "ab");
    QCOMPARE(askAll(device, "#ROOT #HEX #FLASH #WRITE " + segment), segment);
    QCOMPARE(ask(device, bytes), bytes);
    QCOMPARE(ask(device, record(0xFFFE, "abc")), QByteArray("?"));
    QCOMPARE(device.memory(FLASH).size(), end);
    QCOMPARE(device.memory(FLASH).mid(end - 2), QByteArray("ab"));
    QCOMPARE(askAll(device, "#READ " + record(0xFFFE, "xx")), bytes);
    // Selecting the memory once more begins at its start, where nothing was written.
    QCOMPARE(askAll(device, "#FLASH " + record(0xFFFE, "xx")),
             record(0xFFFE, QByteArray("\x04\x00", 2)));
}

void TestVirtualDevice::memoriesBehindTheirEnds_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("size");
    QTest::newRow("EEPROM") << QByteArray("#EEPROM") << 1024;
    QTest::newRow("OTP") << QByteArray("#OTP") << 64;
    QTest::newRow("RAM") << QByteArray("#RAM") << 4096;
    QTest::newRow("ROM") << QByteArray("#ROM") << 256;
}

void TestVirtualDevice::memoriesBehindTheirEnds()
{
    QFETCH(QByteArray, word);
    QFETCH(int, size);
    cMyVirtualDevice device;
    askAll(device, "#ROOT #HEX #READ " + word);
    QVERIFY(ask(device, record(size - 1, "x")).startsWith(":01"));
    QCOMPARE(ask(device, record(size - 1, "xy")), QByteArray("?"));
    QCOMPARE(ask(device, record(size, "x")), QByteArray("?"));
    QCOMPARE(ask(device, record(0xFFFF, "x")), QByteArray("?"));
    // Upper address bits must not be dropped on the way to a memory that has none.
    QCOMPARE(ask(device, ":020000040001F9"), QByteArray(":020000040001F9"));
    QCOMPARE(ask(device, record(0, "x")), QByteArray("?"));
}

void TestVirtualDevice::statusIsThatOfADeviceThatHasDived()
{
    cMyVirtualDevice device;
    device.setSerialNumber(40123);
    QStringList replies;
    for (const QString& line : device::statusRequest()) {
        replies.append(QString::fromLatin1(device.answer(line.toLatin1())));
        QVERIFY2(!replies.last().startsWith(QLatin1Char('?')), qPrintable(line));
    }
    const QStringList texts = device::statusTexts(replies);
    QCOMPARE(texts.at(device::SelfTestFlags), QStringLiteral("1"));
    QCOMPARE(texts.at(device::MaximumDepth), QStringLiteral("18.4 m"));
    QCOMPARE(texts.at(device::DiveTime), QStringLiteral("39:05"));
    QCOMPARE(texts.at(device::SerialNumber), QStringLiteral("40123"));
    QCOMPARE(texts.at(device::MemorySize), QStringLiteral("8"));
    QCOMPARE(texts.at(device::FirmwareVersion), QStringLiteral("1.0.4.0"));
    QCOMPARE(texts.at(device::VoiceLanguage), QStringLiteral("English"));
    QCOMPARE(texts.at(device::VoiceVersion), QStringLiteral("1.0.4.0"));
    QCOMPARE(texts.at(device::SettingsVersion), QStringLiteral("1.0.1.0"));
}

void TestVirtualDevice::longestDiveIsShownTwice()
{
    cMyVirtualDevice device;
    QCOMPARE(emulator::valueAddress(37), 330);
    QCOMPARE(emulator::valueAddress(47), 350);
    device.setValue(emulator::GreatestDiveTime, 3210);
    QCOMPARE(device.value(emulator::StatusDiveTime), qint16(3210));
    const QByteArray written = record(emulator::valueAddress(45), QByteArray::fromHex("3930"));
    QCOMPARE(askAll(device, "#ROOT #HEX #RAM #WRITE " + written), written);
    QCOMPARE(device.value(47), qint16(12345));
    QByteArray ram = device.memory(RAM);
    ram.replace(emulator::valueAddress(45), 2, QByteArray::fromHex("0700"));
    QVERIFY(device.setMemory(RAM, ram));
    QCOMPARE(device.value(47), qint16(7));
}

void TestVirtualDevice::clearingSparesFlagsAndSurfacePressure()
{
    cMyVirtualDevice device;
    device.setValue(emulator::AtmosphericPressure, 987);
    QVERIFY(device.value(emulator::GreatestDepth) != 0);
    QCOMPARE(ask(device, "#CLEAR"), QByteArray("#CLEAR"));
    for (int number = 0; number < 64; ++number) {
        QCOMPARE(device.value(number), qint16(number == 8 ? 987 : 0));
    }
    QCOMPARE(device.memory(RAM).at(1068), '\x01');
}

void TestVirtualDevice::resetKeepsMemoriesAndLeavesModes()
{
    cMyVirtualDevice device;
    const QSignalSpy resets(&device, &cMyVirtualDevice::resetRequested);
    askAll(device, "#ROOT #HEX #RAM #WRITE " + record(0, "x"));
    const QList<QByteArray> before = allMemories(device);
    QCOMPARE(ask(device, "#RESET"), QByteArray("#RESET"));
    QCOMPARE(resets.count(), 1);
    QCOMPARE(allMemories(device), before);
    QCOMPARE(ask(device, record(0, "y")), QByteArray("?"));
}

void TestVirtualDevice::bootIsAskedFor()
{
    cMyVirtualDevice device;
    const QSignalSpy boots(&device, &cMyVirtualDevice::bootRequested);
    const QSignalSpy resets(&device, &cMyVirtualDevice::resetRequested);
    QCOMPARE(ask(device, "#BOOT"), QByteArray("#BOOT"));
    QCOMPARE(boots.count(), 1);
    QCOMPARE(resets.count(), 0);
}

void TestVirtualDevice::simulationStartsOnce()
{
    cMyVirtualDevice device;
    QSignalSpy starts(&device, &cMyVirtualDevice::simulationStarted);
    QVERIFY(!device.isSimulating());
    askAll(device, "#SIMUL #RAM #WRITE #SIMUL");
    QVERIFY(device.isSimulating());
    QCOMPARE(starts.count(), 1);
    for (const char* word : {"#ROOT", "#RESET"}) {
        ask(device, word);
        QVERIFY(!device.isSimulating());
        starts.clear();
        ask(device, "#SIMUL");
        QCOMPARE(starts.count(), 1);
    }
}

void TestVirtualDevice::aSimulationExchangesRecordsAtOnce()
{
    cMyVirtualDevice device;
    askAll(device, "#SIMUL #RAM #READ");
    QCOMPARE(ask(device, ":020110000000ED"), QByteArray(":02011000F503F5"));
    askAll(device, "#SIMUL #RAM #WRITE");
    QCOMPARE(ask(device, ":02010000F50305"), QByteArray(":02010000F50305"));
    QCOMPARE(ask(device, ":00000001FF"), QByteArray(":00000001FF"));
    QCOMPARE(device.value(0), qint16(1013));
    ask(device, "#ROOT");
    askAll(device, "#RAM #READ");
    QCOMPARE(ask(device, ":020110000000ED"), QByteArray("?"));
}

void TestVirtualDevice::offTakesEffectWhenUnplugged()
{
    cMyVirtualDevice device;
    device.setClock([] { return qint64(0); }); // so that what is compared is not measured anew
    const QByteArray powerOn = device.memory(RAM);
    askAll(device, "#SIMUL #HEX #RAM #WRITE " + record(0, "x"));
    const QByteArray used = device.memory(RAM);
    QVERIFY(used != powerOn);
    ask(device, "#OFF");
    QCOMPARE(device.memory(RAM), used);
    device.unplugged();
    device.plugged();
    QCOMPARE(device.memory(RAM), powerOn);
    QVERIFY(!device.isSimulating());
    QCOMPARE(ask(device, "#ROOT"), QByteArray("#ROOT"));
}

void TestVirtualDevice::unpluggingAloneKeepsRam()
{
    cMyVirtualDevice device;
    // Off is for one time: the device that came on again stays on.
    ask(device, "#OFF");
    device.unplugged();
    device.plugged();
    askAll(device, "#HEX #RAM #WRITE " + record(0, "x"));
    const QByteArray used = device.memory(RAM);
    device.unplugged();
    device.plugged();
    QCOMPARE(device.memory(RAM), used);
    QCOMPARE(ask(device, record(0, "y")), QByteArray("?"));
}

void TestVirtualDevice::serialNumbers()
{
    cMyVirtualDevice device;
    device.setSerialNumber(0xABCD);
    QCOMPARE(askAll(device, "#HEX #OTP #READ " + record(0, "xx")), record(0, "\xCD\xAB"));
}

void TestVirtualDevice::memoriesAreSetWholly()
{
    cMyVirtualDevice device;
    const QByteArray bytes(64, 'o');
    QVERIFY(!device.setMemory(OTP, bytes.left(63)));
    QVERIFY(!device.setMemory(OTP, bytes + 'o'));
    QVERIFY(!device.setMemory(static_cast<MemoryType>(7), bytes));
    QVERIFY(device.memory(OTP) != bytes);
    QVERIFY(device.setMemory(OTP, bytes));
    QCOMPARE(device.memory(OTP), bytes);
    QVERIFY(device.memory(static_cast<MemoryType>(7)).isEmpty());
}

void TestVirtualDevice::settingsFiles()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("own.mio"));
    cMyVirtualDevice device;
    QVERIFY(!device.loadSettings(path));
    QCOMPARE(device.memory(EEPROM), support::templateImage());
    support::writeFile(path, support::settingsText(support::markedImage('m')));
    QVERIFY(device.loadSettings(path));
    QCOMPARE(device.memory(EEPROM), support::markedImage('m'));
    support::writeFile(path, record(2000, "far") + '\n' + record(1, "near"));
    QVERIFY(device.loadSettings(path));
    QCOMPARE(device.memory(EEPROM), support::markedImage('m').replace(1, 4, "near"));
}

QTEST_GUILESS_MAIN(TestVirtualDevice)
#include "test_virtualdevice.moc"
