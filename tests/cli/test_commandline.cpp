// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/toolrun.h"

#include <QtTest>

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void usageErrors_data();
    void usageErrors();
    void helpNamesEveryCommand();
    void versionIsTold();
};

void TestCommandLine::usageErrors_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("word");
    QTest::newRow("no command") << QStringList() << "command is missing";
    QTest::newRow("unknown command") << QStringList{"dive"} << "\"dive\"";
    QTest::newRow("unknown option") << QStringList{"ports", "--deep"} << "deep";
    QTest::newRow("option of another command") << QStringList{"ports", "--all"} << "all";
    QTest::newRow("operand missing") << QStringList{"diff", "default"} << "operand is missing";
    QTest::newRow("operand too many") << QStringList{"ports", "x"} << "too many operands";
    QTest::newRow("value missing") << QStringList{"ports", "--port"} << "port";
}

void TestCommandLine::usageErrors()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, word);
    const support::ToolResult result = support::ToolRun().run(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains(word), qPrintable(result.err));
}

void TestCommandLine::helpNamesEveryCommand()
{
    const support::ToolResult result = support::ToolRun().run({"--help"});
    QCOMPARE(result.status, 0);
    for (const char* name : {"ports", "write", "rehearse", "doctor"}) {
        QVERIFY2(result.out.contains(QLatin1String(name)), name);
    }
}

void TestCommandLine::versionIsTold()
{
    const support::ToolResult result = support::ToolRun().run({"--version"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QStringLiteral("miolkactl " MIOLKA_VERSION "\n"));
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "test_commandline.moc"
