// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/devicetool.h"
#include "tests/support/posix.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using support::DeviceTool;
using support::ToolResult;

class TestReadCommand : public QObject
{
    Q_OBJECT

private slots:
    void everyByteIsInTheFile();
    void existingFileIsRefused();
    void fileIsLookedAtBeforeTheDevice();
    void forceKeepsTheOldFile();
    void failureLeavesNoFile_data();
    void failureLeavesNoFile();
    void jsonNamesTheDevice();
    void emulatorsSettingsAreTheDefaults();
};

void TestReadCommand::everyByteIsInTheFile()
{
    DeviceTool tool;
    QByteArray noise(image::settingsImageSize, '\0');
    QRandomGenerator random(5);
    for (char& byte : noise) {
        byte = static_cast<char>(random.bounded(256));
    }
    tool.device.inThread([&] { tool.device.device().setMemory(EEPROM, noise); });
    const ToolResult result = tool.run({"read", tool.file("a.mio")});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(result.out, QString());
    QCOMPARE(DeviceTool::imageOf(tool.file("a.mio")), noise);
}

void TestReadCommand::existingFileIsRefused()
{
    DeviceTool tool;
    support::writeFile(tool.file("a.mio"), "old");
    const ToolResult result = tool.run({"read", tool.file("a.mio")});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains("--force"), qPrintable(result.err));
    QCOMPARE(support::readFile(tool.file("a.mio")), QByteArray("old"));
}

void TestReadCommand::fileIsLookedAtBeforeTheDevice()
{
    DeviceTool tool;
    support::writeFile(tool.file("a.mio"), "old");
    const QString trace = tool.file("trace");
    const QVector<QStringList> commands = {{"read", tool.file("a.mio")},
                                           {"read", tool.file("no/such/a.mio")},
                                           {"read", tool.directory.path(), "--force"}};
    for (const QStringList& command : commands) {
        const ToolResult result = tool.run(command + QStringList{"--trace", trace});
        QCOMPARE(result.status, 5);
        QVERIFY2(result.err.contains(command.at(1)), qPrintable(result.err));
        QVERIFY(!QFile::exists(trace));
    }
}

void TestReadCommand::forceKeepsTheOldFile()
{
    DeviceTool tool;
    support::writeFile(tool.file("a.mio"), "old");
    QCOMPARE(tool.run({"read", tool.file("a.mio"), "--force"}).status, 0);
    QCOMPARE(DeviceTool::imageOf(tool.file("a.mio")), tool.original);
    QCOMPARE(tool.backups().size(), 1);
    QCOMPARE(support::readFile(tool.backups().constFirst()), QByteArray("old"));
}

void TestReadCommand::failureLeavesNoFile_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("a wrong checksum") << "bad-checksum=0.05";
    QTest::newRow("a missing record") << "garbage=0.05";
    QTest::newRow("gone at the last line") << "vanish-at=75";
}

void TestReadCommand::failureLeavesNoFile()
{
    QFETCH(QString, fault);
    DeviceTool tool;
    tool.setFaults(fault);
    QCOMPARE(tool.run({"read", tool.file("a.mio")}).status, 6);
    QVERIFY(!QFile::exists(tool.file("a.mio")));
}

void TestReadCommand::jsonNamesTheDevice()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"read", tool.file("a.mio"), "--json"});
    const QJsonObject told = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(told.value("file"), QJsonValue(tool.file("a.mio")));
    QCOMPARE(told.value("serialNumber"), QJsonValue(1001));
    QVERIFY2(tool.device.path().endsWith(told.value("port").toString()), qPrintable(result.out));
}

void TestReadCommand::emulatorsSettingsAreTheDefaults()
{
    QTemporaryDir directory;
    const QString path = directory.filePath("a.mio");
    QCOMPARE(support::ToolRun().run({"--emulator", "read", path}).status, 0);
    QCOMPARE(DeviceTool::imageOf(path), DeviceTool::imageOf(":/pliki/clear.mio"));
}

QTEST_GUILESS_MAIN(TestReadCommand)
#include "test_readcommand.moc"
