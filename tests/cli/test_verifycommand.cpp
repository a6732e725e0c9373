// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/devicetool.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using support::DeviceTool;
using support::ToolResult;

class TestVerifyCommand : public QObject
{
    Q_OBJECT

private slots:
    void sameSettings();
    void stampAloneIsShownOnly();
    void differencesAreTold();
    void differencesAsJson();
    void badFileComesFirst();
};

void TestVerifyCommand::sameSettings()
{
    DeviceTool tool;
    const ToolResult result = tool.run({"verify", support::coachFile});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString());
}

void TestVerifyCommand::stampAloneIsShownOnly()
{
    DeviceTool tool;
    tool.device.inThread([&] {
        QByteArray bytes = tool.original;
        bytes[2] = '\x63';
        tool.device.device().setMemory(EEPROM, bytes);
    });
    const ToolResult result = tool.run({"verify", support::coachFile});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.startsWith("program version: "), qPrintable(result.out));
    QCOMPARE(result.out.count('\n'), 1);
}

void TestVerifyCommand::differencesAreTold()
{
    DeviceTool tool;
    tool.device.inThread([&] { tool.storeWrongly(0x20); });
    const ToolResult result = tool.run({"verify", support::coachFile});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.out.startsWith("title: "), qPrintable(result.out));
    QCOMPARE(result.out.count('\n'), 1);
}

void TestVerifyCommand::differencesAsJson()
{
    DeviceTool tool;
    tool.device.inThread([&] { tool.storeWrongly(0x20); });
    const ToolResult result = tool.run({"verify", support::coachFile, "--json"});
    QCOMPARE(result.status, 1);
    const QJsonObject told = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(told.value("isDifferent"), QJsonValue(true));
    const QJsonArray differences = told.value("differences").toArray();
    QCOMPARE(differences.size(), 1);
    QCOMPARE(differences.first().toObject().value("name"), QJsonValue("title"));
    QCOMPARE(differences.first().toObject().value("isCounted"), QJsonValue(true));
}

void TestVerifyCommand::badFileComesFirst()
{
    const ToolResult result = support::ToolRun().run({"verify", "/no/such.mio", "--port", "none"});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains("/no/such.mio"), qPrintable(result.err));
}

QTEST_GUILESS_MAIN(TestVerifyCommand)
#include "test_verifycommand.moc"
