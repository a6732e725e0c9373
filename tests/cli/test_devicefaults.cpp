// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/devicetool.h"
#include "tests/support/posix.h"

#include <QtTest>

#include <atomic>

#include <sys/ioctl.h>

using support::DeviceTool;
using support::ToolResult;

/// What goes wrong on the line, as each command that only reads meets it; with the settings as the
/// device holds them where nothing is lost.
class TestDeviceFaults : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void silenceEndsTheRun();
    void whatHelpsStandsInTheMessage();
    void interruptedAtALine_data();
    void interruptedAtALine();
    void everyLineIsTraced();
    void traceNeverReplacesAFile();
    void traceThatCannotBeWritten();
    void answersOfAnEarlierExchangeAreDropped();
};

void TestDeviceFaults::faults_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason");
    const QString nonsense = QStringLiteral("which is no answer to that");
    QTest::newRow("none") << "none" << 0 << "";
    QTest::newRow("pieces") << "split" << 0 << "";
    QTest::newRow("with a notice") << "join" << 0 << "";
    QTest::newRow("behind a notice") << "notice=1" << 0 << "";
    QTest::newRow("behind NULs") << "nul" << 0 << "";
    QTest::newRow("garbage") << "garbage=1" << 6 << nonsense;
    QTest::newRow("garbage at times") << "garbage=0.1" << 6 << nonsense;
    QTest::newRow("wrong checksums") << "bad-checksum=1" << 6 << nonsense;
    QTest::newRow("a wrong checksum") << "bad-checksum=0.05" << 6 << nonsense;
    QTest::newRow("endless lines") << "long=1" << 6 << nonsense;
    QTest::newRow("gone at once") << "vanish-at=1" << 6
                                  << "line 1 of 69 (#ROOT): the device has gone";
    QTest::newRow("gone in the middle") << "vanish-at=40" << 6 << "line 40 of 69";
    QTest::newRow("gone at the end") << "vanish-at=69" << 6 << "line 69 of 69";
}

void TestDeviceFaults::faults()
{
    QFETCH(QString, fault);
    QFETCH(int, status);
    QFETCH(QString, reason);
    DeviceTool tool;
    tool.setFaults(fault);
    const ToolResult result = tool.run({"verify", support::coachFile});
    QVERIFY2(result.status == status, qPrintable(result.err));
    QVERIFY2(result.err.contains(reason), qPrintable(result.err));
}

void TestDeviceFaults::silenceEndsTheRun()
{
    DeviceTool tool;
    tool.setFaults(QStringLiteral("silent-after=50"));
    const ToolResult result = tool.run({"verify", support::coachFile});
    QCOMPARE(result.status, 6);
    QVERIFY2(result.err.contains("line 51 of 69"), qPrintable(result.err));
    QVERIFY2(result.err.contains("does not answer"), qPrintable(result.err));
}

void TestDeviceFaults::whatHelpsStandsInTheMessage()
{
    DeviceTool tool;
    tool.setFaults(QStringLiteral("vanish-at=9"));
    const ToolResult result = tool.run({"status"});
    QCOMPARE(result.status, 6);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains("line 9 of 93"), qPrintable(result.err));
    QVERIFY2(result.err.contains("miolkactl doctor"), qPrintable(result.err));
}

void TestDeviceFaults::interruptedAtALine_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("first") << 1;
    QTest::newRow("middle") << 30;
    QTest::newRow("near the end") << 67;
}

void TestDeviceFaults::interruptedAtALine()
{
    QFETCH(int, line);
    DeviceTool tool;
    std::atomic<qint64> process{0};
    tool.afterLine(line, [&process] { ::kill(static_cast<pid_t>(process.load()), SIGINT); });
    tool.start({"verify", support::coachFile, "--trace", tool.file("trace")});
    process = tool.tool.process.processId();
    const ToolResult result = tool.tool.finish();
    QVERIFY2(result.status == 130, qPrintable(result.err));
    QVERIFY2(result.err.contains("the device is in its root mode"), qPrintable(result.err));
    const QByteArray trace = support::readFile(tool.file("trace"));
    QVERIFY2(trace.endsWith(" < #ROOT\\r\\n\n"), trace.constData());
}

void TestDeviceFaults::everyLineIsTraced()
{
    DeviceTool tool;
    tool.setFaults(QStringLiteral("notice=1"));
    QCOMPARE(tool.run({"verify", support::coachFile, "--trace", tool.file("trace")}).status, 0);
    const QByteArray trace = support::readFile(tool.file("trace"));
    QCOMPARE(trace.count(" > "), support::transferLines);
    QCOMPARE(trace.count(" < "), 2 * support::transferLines);
    QCOMPARE(trace.count(" < !BATTERY 87\\r\\n\n"), support::transferLines);
    QVERIFY(trace.contains(" > #EEPROM\\r\\n\n"));
}

void TestDeviceFaults::traceNeverReplacesAFile()
{
    DeviceTool tool;
    support::writeFile(tool.file("notes"), "precious");
    const ToolResult result = tool.run({"status", "--trace", tool.file("notes")});
    QCOMPARE(result.status, 5);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains("is there already"), qPrintable(result.err));
    QCOMPARE(support::readFile(tool.file("notes")), QByteArray("precious"));
}

void TestDeviceFaults::traceThatCannotBeWritten()
{
    DeviceTool tool;
    int lines = 0;
    tool.device.inThread([&] {
        QObject::connect(&tool.device.port(), &cMyVirtualPort::lineServed, &tool.device.port(),
                         [&lines](int count) { lines = count; });
    });
    QCOMPARE(tool.run({"status", "--trace", tool.file("no/such/directory")}).status, 5);
    tool.device.inThread([] {});
    QCOMPARE(lines, 0);
}

void TestDeviceFaults::answersOfAnEarlierExchangeAreDropped()
{
    DeviceTool tool;
    // Late answers to a program that was killed in the middle.
    QFile port(tool.device.path());
    QVERIFY(port.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    port.write("#ROOT\r\n#HEX\r\n#OTP\r\n");
    QTRY_VERIFY([&] {
        int bytes = 0;
        return ::ioctl(port.handle(), FIONREAD, &bytes) == 0 && bytes == 19;
    }());
    QCOMPARE(tool.run({"verify", support::coachFile}).status, 0);
}

QTEST_GUILESS_MAIN(TestDeviceFaults)
#include "test_devicefaults.moc"
