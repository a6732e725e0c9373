// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/bootloader.h"
#include "tests/cli/devicetool.h"

#include <QtTest>

using support::DeviceTool;
using support::ToolResult;

class TestServiceCommands : public QObject
{
    Q_OBJECT

private slots:
    void resetStartsTheDeviceAnew();
    void bootStartsTheBootLoader();
    void clearStatsClears();
    void powerOffTakesEffectWhenUnplugged();
    void eachAsksFirst_data();
    void eachAsksFirst();
    void goneAtTheAnswer_data();
    void goneAtTheAnswer();
    void goneAtTheQuestion_data();
    void goneAtTheQuestion();
};

void TestServiceCommands::resetStartsTheDeviceAnew()
{
    DeviceTool tool;
    bool wasReset = false;
    tool.device.inThread([&] {
        QObject::connect(&tool.device.device(), &cMyVirtualDevice::resetRequested,
                         &tool.device.device(), [&wasReset] { wasReset = true; });
    });
    const ToolResult result = tool.run({"reset", "--yes"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.err.contains("wait until it is back"), qPrintable(result.err));
    tool.device.inThread([] {});
    QVERIFY(wasReset);
}

void TestServiceCommands::bootStartsTheBootLoader()
{
    DeviceTool tool;
    bool wasBooted = false;
    tool.device.inThread([&] {
        QObject::connect(&tool.device.device(), &cMyVirtualDevice::bootRequested,
                         &tool.device.device(), [&wasBooted] { wasBooted = true; });
    });
    const ToolResult result = tool.run({"boot", "--yes"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.err.contains(cli::bootLoaderWayOut()), qPrintable(result.err));
    tool.device.inThread([] {});
    QVERIFY(wasBooted);
}

void TestServiceCommands::clearStatsClears()
{
    DeviceTool tool;
    tool.device.inThread([&] { tool.device.device().setValue(emulator::GreatestDepth, 1234); });
    QCOMPARE(tool.run({"clear-stats", "--yes"}).status, 0);
    qint16 depth = -1;
    tool.device.inThread([&] { depth = tool.device.device().value(emulator::GreatestDepth); });
    QCOMPARE(depth, qint16{0});
}

void TestServiceCommands::powerOffTakesEffectWhenUnplugged()
{
    DeviceTool tool;
    qint16 before = 0;
    qint16 after = 0;
    QCOMPARE(tool.run({"power-off", "--yes"}).status, 0);
    tool.device.inThread([&] {
        tool.device.device().setValue(emulator::Stopwatch0, 77);
        before = tool.device.device().value(emulator::Stopwatch0);
        tool.device.device().unplugged();
        after = tool.device.device().value(emulator::Stopwatch0);
    });
    QCOMPARE(before, qint16{77});
    QCOMPARE(after, qint16{0});
}

void TestServiceCommands::eachAsksFirst_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("warning");
    QTest::newRow("reset") << "reset"
                           << "settings and sounds stay";
    QTest::newRow("clear-stats") << "clear-stats"
                                 << "cannot be brought back";
    QTest::newRow("power-off") << "power-off"
                               << "when it is unplugged";
    QTest::newRow("boot") << "boot"
                          << "only takes new firmware";
}

void TestServiceCommands::eachAsksFirst()
{
    QFETCH(QString, command);
    QFETCH(QString, warning);
    DeviceTool tool;
    int lines = 0;
    tool.device.inThread([&] {
        QObject::connect(&tool.device.port(), &cMyVirtualPort::lineServed, &tool.device.port(),
                         [&lines](int count) { lines = count; });
    });
    const ToolResult result = tool.run({command});
    QCOMPARE(result.status, 130);
    QVERIFY2(result.err.contains(warning), qPrintable(result.err));
    tool.device.inThread([] {});
    QCOMPARE(lines, 0);
    QCOMPARE(tool.run({command}, "y\n").status, 0);
    tool.device.inThread([] {});
    QCOMPARE(lines, 1);
}

void TestServiceCommands::goneAtTheAnswer_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("status");
    QTest::newRow("reset") << "reset" << 0;
    QTest::newRow("boot") << "boot" << 0;
    QTest::newRow("clear-stats") << "clear-stats" << 6;
    QTest::newRow("power-off") << "power-off" << 6;
}

/// A device that starts anew may do so before its answer has left.
void TestServiceCommands::goneAtTheAnswer()
{
    QFETCH(QString, command);
    QFETCH(int, status);
    DeviceTool tool;
    tool.setFaults(QStringLiteral("vanish-at=1"));
    const ToolResult result = tool.run({command, "--yes"});
    QVERIFY2(result.status == status, qPrintable(result.err));
}

void TestServiceCommands::goneAtTheQuestion_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("reset") << "reset";
    QTest::newRow("boot") << "boot";
}

/// Nothing reached it, so nothing was done.
void TestServiceCommands::goneAtTheQuestion()
{
    QFETCH(QString, command);
    DeviceTool tool;
    tool.start({command});
    QByteArray shown;
    QTRY_VERIFY((shown += tool.tool.process.readAllStandardError()).contains("[y/N]"));
    tool.device.inThread([&] { tool.device.port().unplug(); });
    tool.tool.process.write("y\n");
    const ToolResult result = tool.tool.finish();
    QVERIFY2(result.status == 6, qPrintable(result.err));
    QVERIFY2(result.err.contains("the device has gone"), qPrintable(result.err));
}

QTEST_GUILESS_MAIN(TestServiceCommands)
#include "test_servicecommands.moc"
