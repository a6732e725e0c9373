// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "tests/cli/devicetool.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using support::DeviceTool;
using support::ToolResult;

class TestStatusCommand : public QObject
{
    Q_OBJECT

private slots:
    void allValuesAreTold();
    void selfTestInWords_data();
    void selfTestInWords();
    void jsonHasNumbers();
    void foreignTextsAreNotInterpreted();
    void emulatorNeedsNoDevice();
    void quietStillTells();
};

namespace {

void setSelfTest(DeviceTool& tool, int flags)
{
    tool.device.inThread([&] {
        QByteArray ram = tool.device.device().memory(RAM);
        ram[emulator::selfTestAddress] = static_cast<char>(flags);
        tool.device.device().setMemory(RAM, ram);
    });
}

void setDive(DeviceTool& tool, int depth, int time)
{
    tool.device.inThread([&] {
        tool.device.device().setSerialNumber(4711);
        tool.device.device().setValue(emulator::GreatestDepth, static_cast<qint16>(depth));
        tool.device.device().setValue(emulator::GreatestDiveTime, static_cast<qint16>(time));
    });
}

} // namespace

void TestStatusCommand::allValuesAreTold()
{
    DeviceTool tool;
    setDive(tool, 1234, 3723);
    const ToolResult result = tool.run({"status"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.count(QLatin1Char('\n')), int{device::StatusTextCount});
    for (const char* line : {"Self-test:             works\n", "Max depth:             12.3 m\n",
                             "Dive time:             1:02:03\n", "Serial number:         4711\n",
                             "Hardware version:      1.2.0.0\n", "Memory size:           8 MB\n",
                             "Language:              English\n"}) {
        QVERIFY2(result.out.contains(QLatin1String(line)), qPrintable(result.out));
    }
    QVERIFY2(result.out.contains(QRegularExpression("Title: +\\S")), qPrintable(result.out));
}

void TestStatusCommand::selfTestInWords_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("words");
    QTest::newRow("works") << 0x01 << "works";
    QTest::newRow("does not work") << 0x00 << "does not work";
    QTest::newRow("sensor") << 0x03 << "works, pressure sensor faulty";
    QTest::newRow("audio") << 0x05 << "works, audio codec faulty";
    QTest::newRow("flash") << 0x09 << "works, flash faulty";
    QTest::newRow("settings") << 0x11 << "works, error in the settings";
    QTest::newRow("library") << 0x21 << "works, error in the sound library";
    QTest::newRow("messages") << 0x41 << "works, error in the custom messages";
    QTest::newRow("firmware") << 0x81 << "works, error in the firmware";
    QTest::newRow("two") << 0x06 << "does not work, pressure sensor faulty, audio codec faulty";
}

void TestStatusCommand::selfTestInWords()
{
    QFETCH(int, flags);
    QFETCH(QString, words);
    DeviceTool tool;
    setSelfTest(tool, flags);
    const ToolResult result = tool.run({"status"});
    QCOMPARE(result.out.section(QLatin1Char('\n'), 0, 0).section(QStringLiteral(":"), 1).trimmed(),
             words);
}

void TestStatusCommand::jsonHasNumbers()
{
    DeviceTool tool;
    setDive(tool, 1234, 3723);
    setSelfTest(tool, 0x21);
    const ToolResult result = tool.run({"status", "--json"});
    QCOMPARE(result.status, 0);
    const QJsonObject status = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(status.value("maximumDepthMetres"), QJsonValue(12.34));
    QCOMPARE(status.value("diveTimeSeconds"), QJsonValue(3723));
    QCOMPARE(status.value("serialNumber"), QJsonValue(4711));
    QCOMPARE(status.value("memorySizeMegabytes"), QJsonValue(8));
    QCOMPARE(status.value("hardwareVersion"), QJsonValue("1.2.0.0"));
    const QJsonObject selfTest = status.value("selfTest").toObject();
    QCOMPARE(selfTest.value("works"), QJsonValue(true));
    QCOMPARE(selfTest.value("flags"), QJsonValue(0x21));
    QCOMPARE(selfTest.value("faults"), QJsonValue(QJsonArray{"error in the sound library"}));
    QCOMPARE(status.size(), 14);
}

void TestStatusCommand::foreignTextsAreNotInterpreted()
{
    DeviceTool tool;
    tool.device.inThread([&] {
        QByteArray eeprom = tool.device.device().memory(EEPROM);
        eeprom.replace(0x10, 8, "\x1b[2J\nAA", 8);
        tool.device.device().setMemory(EEPROM, eeprom);
    });
    const ToolResult result = tool.run({"status"});
    QCOMPARE(result.status, 0);
    QVERIFY2(!result.out.contains(QChar(0x1b)), qPrintable(result.out));
    QVERIFY2(result.out.contains("\\x1b[2J\\nAA"), qPrintable(result.out));
}

void TestStatusCommand::emulatorNeedsNoDevice()
{
    const ToolResult result = support::ToolRun().run({"--emulator", "status"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.contains("Serial number:         1001"), qPrintable(result.out));
    QCOMPARE(result.err, QString());
}

void TestStatusCommand::quietStillTells()
{
    DeviceTool tool;
    QVERIFY(tool.run({"status", "-q"}).out.contains("Serial number:"));
}

QTEST_GUILESS_MAIN(TestStatusCommand)
#include "test_statuscommand.moc"
