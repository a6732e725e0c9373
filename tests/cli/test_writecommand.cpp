// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/devicetool.h"
#include "tests/support/posix.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using support::DeviceTool;
using support::ToolResult;

class TestWriteCommand : public QObject
{
    Q_OBJECT

private slots:
    void writesStampsAndVerifies();
    void asksFirst_data();
    void asksFirst();
    void showsWhatWouldChange();
    void sameSettingsAreNotWritten();
    void restoreWritesTheStampToo();
    void restoreNeedsAllBytes();
    void backupOfAnotherDevice_data();
    void backupOfAnotherDevice();
    void quietQuestionShowsWhatWouldChange();
    void noBackupNoWriting();
    void badFileIsRefused();
    void faultyAnswersEndIt_data();
    void faultyAnswersEndIt();
    void mismatchIsFoundAndUndone();
    void mismatchMayBeLeft();
    void mismatchThatCannotBeUndone();
    void jsonTellsAll();
    void closedOutputStopsNothing();
    void allExcludesAPort();
    void allTakesTheEmulator();
};

void TestWriteCommand::writesStampsAndVerifies()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(tool.eeprom(), DeviceTool::stamped(support::exampleFile));
    QCOMPARE(tool.backups().size(), 1);
    QCOMPARE(DeviceTool::imageOf(tool.backups().constFirst()), tool.original);
    const QString name = QFileInfo(tool.backups().constFirst()).fileName();
    QVERIFY2(name.startsWith("pts-") && name.contains("-1001-"), qPrintable(name));
    QVERIFY2(result.err.contains(tool.backups().constFirst()), qPrintable(result.err));
    QCOMPARE(tool.run({"verify", support::exampleFile}).status, 0);
}

void TestWriteCommand::asksFirst_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("status");
    QTest::newRow("yes") << QByteArray("yes\n") << 0;
    QTest::newRow("no") << QByteArray("no\n") << 130;
    QTest::newRow("nothing") << QByteArray("\n") << 130;
    QTest::newRow("end of input") << QByteArray() << 130;
}

void TestWriteCommand::asksFirst()
{
    QFETCH(QByteArray, input);
    QFETCH(int, status);
    DeviceTool tool;
    const ToolResult result = tool.run({"write", support::exampleFile}, input);
    QVERIFY2(result.status == status, qPrintable(result.err));
    QVERIFY2(result.err.contains("[y/N]"), qPrintable(result.err));
    QCOMPARE(tool.eeprom() == tool.original, status != 0);
    QCOMPARE(tool.backups().isEmpty(), status != 0);
}

void TestWriteCommand::showsWhatWouldChange()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"write", support::exampleFile});
    QVERIFY2(result.err.contains("title: "), qPrintable(result.err));
    QVERIFY2(result.err.contains("-> \"Training dives, 20 m\""), qPrintable(result.err));
    QVERIFY2(result.err.contains("program version: "), qPrintable(result.err));
}

void TestWriteCommand::sameSettingsAreNotWritten()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"write", support::coachFile});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY2(result.err.contains("holds these settings already"), qPrintable(result.err));
    QCOMPARE(tool.eeprom(), tool.original);
    QCOMPARE(tool.backups(), QStringList());
}

void TestWriteCommand::restoreWritesTheStampToo()
{
    DeviceTool tool;
    QByteArray old = tool.original;
    old[0] = '\x09';
    tool.device.inThread([&] { tool.device.device().setMemory(EEPROM, old); });
    // Another stamp alone is a reason to write a backup back, and to keep one.
    const ToolResult result = tool.run({"write", "--restore", support::coachFile, "--yes"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY2(result.err.contains("program version: "), qPrintable(result.err));
    QVERIFY2(!result.err.contains("not counted"), qPrintable(result.err));
    QCOMPARE(tool.eeprom(), DeviceTool::imageOf(support::coachFile));
    QCOMPARE(tool.backups().size(), 1);
    QCOMPARE(DeviceTool::imageOf(tool.backups().constFirst()), old);
}

void TestWriteCommand::restoreNeedsAllBytes()
{
    DeviceTool tool;
    const QStringList lines =
        QString::fromLatin1(support::readFile(support::coachFile)).split(QLatin1Char('\n'));
    const QString text = (lines.mid(0, 3) + QStringList{":00000001FF\r\n"}).join(QLatin1Char('\n'));
    support::writeFile(tool.file("a.mio"), text.toLatin1());
    const ToolResult result = tool.run({"write", "--restore", tool.file("a.mio"), "--yes"});
    QVERIFY2(result.status == 5, qPrintable(result.err));
    QVERIFY2(result.err.contains("gives only 48 of 1024 bytes, and is no backup"),
             qPrintable(result.err));
    QCOMPARE(tool.eeprom(), tool.original);
}

void TestWriteCommand::backupOfAnotherDevice_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isWarned");
    const QString own = QStringLiteral("ttyACM0-1001-20260801-120000-000.mio");
    const QString other = QStringLiteral("ttyACM0-1002-20260801-120000-000.mio");
    const QStringList restore = {"--restore"};
    QTest::newRow("own") << own << QStringList{"--restore", "--yes"} << QByteArray() << 0 << false;
    QTest::newRow("refused") << other << QStringList{"--restore", "--yes"} << QByteArray() << 3
                             << true;
    QTest::newRow("of one millisecond")
        << QString(other).replace(".mio", "-1.mio") << QStringList{"--restore", "--yes"}
        << QByteArray() << 3 << true;
    QTest::newRow("asked, no") << other << restore << QByteArray("n\n") << 130 << true;
    QTest::newRow("asked, yes") << other << restore << QByteArray("y\n") << 0 << true;
    QTest::newRow("own, asked") << own << restore << QByteArray("y\n") << 0 << false;
    QTest::newRow("no restoring") << other << QStringList{"--yes"} << QByteArray() << 0 << false;
}

void TestWriteCommand::backupOfAnotherDevice()
{
    QFETCH(QString, name);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, input);
    QFETCH(int, status);
    DeviceTool tool;
    QByteArray bytes = tool.original;
    bytes[0x20] = 'X';
    cMyMemoryArea image;
    for (int address = 0; address < bytes.size(); ++address) {
        image.setData(static_cast<quint32>(address), static_cast<quint8>(bytes.at(address)));
    }
    QVERIFY(image::writeSettingsFile(tool.file(name), image));
    const ToolResult result = tool.run(QStringList{"write", tool.file(name)} + options, input);
    QVERIFY2(result.status == status, qPrintable(result.err));
    QTEST(result.err.contains("this is a backup of device 1002, and ") &&
              result.err.contains(" is device 1001"),
          "isWarned");
    QCOMPARE(tool.eeprom() == tool.original, status != 0);
}

void TestWriteCommand::quietQuestionShowsWhatWouldChange()
{
    DeviceTool tool;
    const ToolResult asked = tool.run({"write", support::exampleFile, "-q"});
    QCOMPARE(asked.status, 130);
    const auto change = asked.err.indexOf("title: ");
    QVERIFY2(change >= 0 && change < asked.err.indexOf("[y/N]"), qPrintable(asked.err));
    const ToolResult answered = tool.run({"write", support::exampleFile, "-q"}, "y\n");
    QCOMPARE(answered.status, 0);
    QVERIFY2(!answered.err.contains("is kept in"), qPrintable(answered.err));
}

void TestWriteCommand::noBackupNoWriting()
{
    DeviceTool tool;
    support::writeFile(tool.file("file"), "no directory");
    const ToolResult result = tool.run(
        {"write", support::exampleFile, "--yes", "--backup-dir", tool.file("file/backups")});
    QVERIFY2(result.status == 5, qPrintable(result.err));
    QCOMPARE(tool.eeprom(), tool.original);
}

void TestWriteCommand::badFileIsRefused()
{
    DeviceTool tool;
    for (const QString& path : {tool.file("none.mio"), tool.directory.path()}) {
        const ToolResult result = tool.run({"write", path, "--yes"});
        QVERIFY2(result.status == 5, qPrintable(result.err));
        QVERIFY2(result.err.contains(path), qPrintable(result.err));
    }
    QCOMPARE(tool.eeprom(), tool.original);
}

void TestWriteCommand::faultyAnswersEndIt_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("status");
    QTest::newRow("pieces") << "split" << 0;
    QTest::newRow("with a notice") << "join" << 0;
    QTest::newRow("behind a notice") << "notice=1" << 0;
    QTest::newRow("behind NULs") << "nul" << 0;
    QTest::newRow("garbage") << "garbage=1" << 6;
    QTest::newRow("wrong checksums") << "bad-checksum=1" << 6;
    QTest::newRow("endless lines") << "long=1" << 6;
}

/// From the first line of writing on, so that there is something to bring back.
void TestWriteCommand::faultyAnswersEndIt()
{
    QFETCH(QString, fault);
    QFETCH(int, status);
    DeviceTool tool;
    tool.afterLine(support::firstWriteLine - 1, [&] {
        cMyFaults faults;
        faults.add(fault);
        tool.device.port().setFaults(faults);
    });
    const ToolResult result = tool.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == status, qPrintable(result.err));
    QCOMPARE(tool.backups().size(), 1);
    QCOMPARE(DeviceTool::imageOf(tool.backups().constFirst()), tool.original);
    QCOMPARE(result.err.contains("miolkactl write --restore " + tool.backups().constFirst()),
             status != 0);
    QVERIFY(status != 0 || tool.eeprom() == DeviceTool::stamped(support::exampleFile));
}

void TestWriteCommand::mismatchIsFoundAndUndone()
{
    DeviceTool tool;
    tool.afterLine(support::lastWriteLine, [&] { tool.storeWrongly(0x20); });
    const ToolResult result = tool.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 7, qPrintable(result.err));
    QVERIFY2(result.err.contains("title: \"Training dives, 20 m\" -> "), qPrintable(result.err));
    QVERIFY2(result.err.contains("holds again what it held before"), qPrintable(result.err));
    QCOMPARE(result.err.count("it does not hold what was written to it"), 1);
    QCOMPARE(tool.eeprom(), tool.original);
}

void TestWriteCommand::mismatchMayBeLeft()
{
    DeviceTool tool;
    tool.afterLine(support::lastWriteLine, [&] { tool.storeWrongly(0x20); });
    const ToolResult result = tool.run({"write", support::exampleFile}, "yes\nno\n");
    QVERIFY2(result.status == 7, qPrintable(result.err));
    QVERIFY2(result.err.contains("miolkactl write --restore " + tool.backups().constFirst()),
             qPrintable(result.err));
    QVERIFY(tool.eeprom() != tool.original);
}

void TestWriteCommand::mismatchThatCannotBeUndone()
{
    DeviceTool tool;
    tool.afterLine(support::lastWriteLine, [&] { tool.storeWrongly(0x20); });
    tool.afterLine(support::lastLine + support::transferLines, [&] { tool.storeWrongly(0x21); });
    const ToolResult result = tool.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 7, qPrintable(result.err));
    QVERIFY2(result.err.contains("could not be written back"), qPrintable(result.err));
    QVERIFY2(result.err.contains("miolkactl write --restore " + tool.backups().constFirst()),
             qPrintable(result.err));
    QVERIFY(tool.eeprom() != tool.original);
}

void TestWriteCommand::jsonTellsAll()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"write", support::exampleFile, "--yes", "--json", "-q"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.err, QString());
    const QJsonArray devices =
        QJsonDocument::fromJson(result.out.toUtf8()).object().value("devices").toArray();
    QCOMPARE(devices.size(), 1);
    const QJsonObject device = devices.first().toObject();
    QCOMPARE(device.value("result"), QJsonValue("written"));
    QCOMPARE(device.value("status"), QJsonValue(0));
    QCOMPARE(device.value("serialNumber"), QJsonValue(1001));
    QCOMPARE(device.value("backup"), QJsonValue(tool.backups().constFirst()));
    QVERIFY(device.value("differences").toArray().size() > 3);
}

void TestWriteCommand::closedOutputStopsNothing()
{
    DeviceTool tool;
    tool.start({"write", support::exampleFile, "--yes", "--json"});
    tool.tool.process.closeReadChannel(QProcess::StandardOutput);
    tool.tool.process.closeReadChannel(QProcess::StandardError);
    QCOMPARE(tool.tool.finish().status, 0);
    QCOMPARE(tool.eeprom(), DeviceTool::stamped(support::exampleFile));
}

void TestWriteCommand::allExcludesAPort()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"write", support::exampleFile, "--all", "--yes"});
    QCOMPARE(result.status, 2);
    QCOMPARE(tool.eeprom(), tool.original);
}

void TestWriteCommand::allTakesTheEmulator()
{
    QTemporaryDir directory;
    const ToolResult result =
        support::ToolRun(directory.path())
            .run({"write", support::exampleFile, "--all", "--emulator", "-y"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(result.out, QString("emulator 1001: written, and read back the same\n"));
}

QTEST_GUILESS_MAIN(TestWriteCommand)
#include "test_writecommand.moc"
