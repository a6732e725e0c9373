// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/devicesession.h"
#include "device/serialline.h"
#include "tests/cli/devicetool.h"
#include "tests/support/posix.h"

#include <QSerialPort>
#include <QtTest>

#include <sys/stat.h>

using support::DeviceTool;
using support::ToolResult;

/// Ports that cannot be used, for every command that needs one.
class TestDevicePorts : public QObject
{
    Q_OBJECT

private slots:
    void noSuchPort_data();
    void noSuchPort();
    void noSerialPort();
    void portInUse();
    void forbiddenPort();
    void answers_data();
    void answers();
};

void TestDevicePorts::noSuchPort_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("status") << QStringList{"status"};
    QTest::newRow("verify") << QStringList{"verify", support::exampleFile};
    QTest::newRow("write") << QStringList{"write", support::exampleFile, "--yes"};
    QTest::newRow("reset") << QStringList{"reset", "--yes"};
    QTest::newRow("clear-stats") << QStringList{"clear-stats", "--yes"};
    QTest::newRow("power-off") << QStringList{"power-off", "--yes"};
    QTest::newRow("boot") << QStringList{"boot", "--yes"};
}

void TestDevicePorts::noSuchPort()
{
    QFETCH(QStringList, command);
    for (const char* name : {"ttyNothing", "/dev/pts/nothing"}) {
        const ToolResult result =
            support::ToolRun().run(command + QStringList{"--port", QLatin1String(name)});
        QCOMPARE(result.status, 3);
        QVERIFY2(result.err.contains(QStringLiteral("\"%1\"").arg(QLatin1String(name))),
                 qPrintable(result.err));
        QVERIFY2(result.err.contains("miolkactl ports"), qPrintable(result.err));
    }
}

void TestDevicePorts::noSerialPort()
{
    QTemporaryDir directory;
    const QString path = directory.filePath("file");
    support::writeFile(path, "no port");
    const ToolResult result = support::ToolRun().run({"status", "--port", path});
    QVERIFY2(result.status == 3, qPrintable(result.err));
    QVERIFY2(result.err.contains("cannot be used as a serial port"), qPrintable(result.err));
    QCOMPARE(support::readFile(path), QByteArray("no port"));
}

void TestDevicePorts::portInUse()
{
    DeviceTool tool;
    QSerialPort holder;
    QVERIFY(device::openPort(holder, tool.device.path()));
    const ToolResult result =
        tool.run({"write", support::exampleFile, "--yes", "--trace", tool.file("trace")});
    QCOMPARE(result.status, 4);
    QVERIFY(!QFile::exists(tool.file("trace")));
    QVERIFY2(result.err.contains("in use by another program"), qPrintable(result.err));
    QVERIFY2(result.err.contains("miolkactl doctor"), qPrintable(result.err));
    holder.close();
    QCOMPARE(tool.run({"status"}).status, 0);
}

void TestDevicePorts::forbiddenPort()
{
    DeviceTool tool;
    QVERIFY(chmod(QFile::encodeName(tool.device.path()).constData(), 0) == 0);
    ToolResult result;
    {
        const support::WithoutPrivileges nobody;
        result = tool.run({"status"});
    }
    QVERIFY2(result.status == 4, qPrintable(result.err));
    QVERIFY2(result.err.contains("not allowed"), qPrintable(result.err));
    QVERIFY2(result.err.contains("miolkactl doctor"), qPrintable(result.err));
}

void TestDevicePorts::answers_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("isRecord");
    QTest::addColumn<bool>("isEcho");
    QTest::newRow("word") << "#HEX"
                          << "#HEX" << false << true;
    QTest::newRow("another word") << "#HEX"
                                  << "#ROOT" << false << false;
    QTest::newRow("not understood") << "#HEX"
                                    << "?" << false << false;
    QTest::newRow("nothing") << "#HEX"
                             << "" << false << false;
    QTest::newRow("end") << ":00000001FF"
                         << ":00000001FF" << true << true;
    QTest::newRow("end for data") << ":0100000000FF"
                                  << ":00000001FF" << false << false;
    QTest::newRow("itself") << ":0100000000FF"
                            << ":0100000000FF" << true << true;
    QTest::newRow("other data") << ":0100000000FF"
                                << ":0100000007F8" << true << false;
    QTest::newRow("small letters") << ":0100000000FF"
                                   << ":0100000000ff" << true << true;
    QTest::newRow("wrong sum") << ":0100000000FF"
                               << ":0100000007F9" << false << false;
    QTest::newRow("another address") << ":0100000000FF"
                                     << ":0100010000FE" << false << false;
    QTest::newRow("more data") << ":0100000000FF"
                               << ":020000000000FE" << false << false;
    QTest::newRow("text behind it") << ":0100000000FF"
                                    << ":0100000007F8 x" << false << false;
}

void TestDevicePorts::answers()
{
    QFETCH(QString, line);
    QFETCH(QString, reply);
    const QString end = QStringLiteral("\r\n");
    QTEST(cli::isRecordFor(line + end, reply + end), "isRecord");
    QTEST(cli::isEcho(line + end, reply + end), "isEcho");
}

QTEST_GUILESS_MAIN(TestDevicePorts)
#include "test_deviceports.moc"
