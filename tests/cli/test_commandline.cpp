// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/helptext.h"
#include "cli/invocation.h"
#include "tests/cli/toolrun.h"

#include <QtTest>

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void usageErrors_data();
    void usageErrors();
    void helpNamesEveryCommand();
    void helpTellsTheWholeCommand_data();
    void helpTellsTheWholeCommand();
    void versionIsTold();
    void lostResultsEndInAFailure_data();
    void lostResultsEndInAFailure();
    void mangledNamesAreRefused();
};

void TestCommandLine::usageErrors_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("word");
    QTest::newRow("no command") << QStringList() << "command is missing";
    QTest::newRow("unknown command") << QStringList{"dive"} << "\"dive\"";
    QTest::newRow("slip of the finger") << QStringList{"shw"} << "do you mean show?";
    QTest::newRow("empty value") << QStringList{"new", "a.mio", "--backup-dir="}
                                 << "--backup-dir needs a value";
    QTest::newRow("empty value of a common option")
        << QStringList{"status", "--port", ""} << "--port needs a value";
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
    for (const cMyCommand& command : cli::commands()) {
        QVERIFY2(result.out.contains(QStringLiteral("\n  %1 ").arg(command.name)), command.name);
        QVERIFY2(result.out.simplified().contains(QLatin1String(command.summary)), command.name);
    }
    for (const cli::StatusMeaning& row : cli::exitStatuses()) {
        QVERIFY2(result.out.simplified().contains(QLatin1String(row.meaning)), row.meaning);
    }
}

void TestCommandLine::helpTellsTheWholeCommand_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < cli::commands().size(); ++row) {
        QTest::newRow(cli::commands().at(row).name) << row;
    }
}

void TestCommandLine::helpTellsTheWholeCommand()
{
    constexpr int widest = 80;
    QFETCH(int, row);
    const cMyCommand& command = cli::commands().at(row);
    const cMyCommandLine line = cli::parseCommandLine({"/a/b", command.name, "--help"});
    QCOMPARE(line.kind, cMyCommandLine::Kind::Help);
    const QString text = line.text.simplified();
    QVERIFY(text.startsWith("Usage: miolkactl [options] " + cli::synopsis(command)));
    for (const cMyOption& option : cli::commonOptions() + command.options) {
        QVERIFY2(line.text.contains("\n  " + cli::optionText(option)), option.name);
        QVERIFY2(text.contains(QString(option.summary).simplified()), option.name);
    }
    for (const cMyOperand& operand : command.operands) {
        QVERIFY2(line.text.contains(QStringLiteral("\n  %1").arg(operand.name)), operand.name);
    }
    for (const QString& paragraph : cli::paragraphs(command)) {
        QVERIFY2(text.contains(paragraph.simplified()), qPrintable(paragraph));
    }
    for (const QString& each : line.text.split('\n')) {
        QVERIFY2(each.size() <= widest && !each.endsWith(' '), qPrintable(each));
    }
}

void TestCommandLine::versionIsTold()
{
    const support::ToolResult result = support::ToolRun().run({"--version"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QStringLiteral("miolkactl " MIOLKA_VERSION "\n"));
}

void TestCommandLine::lostResultsEndInAFailure_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::newRow("full disk") << ">/dev/full";
    QTest::newRow("closed") << ">&-";
}

void TestCommandLine::lostResultsEndInAFailure()
{
    QFETCH(QString, redirection);
    support::ToolRun tool;
    const QString program = tool.process.program();
    tool.process.setProgram("sh");
    const support::ToolResult result =
        tool.run({"-c", "exec \"$0\" --version " + redirection, program});
    QCOMPARE(result.status, 5);
    QCOMPARE(
        result.err,
        QStringLiteral("miolkactl: the results could not be written to the standard output\n"));
}

void TestCommandLine::mangledNamesAreRefused()
{
    support::ToolRun tool;
    const QString program = tool.process.program();
    tool.process.setProgram("sh");
    const support::ToolResult result =
        tool.run({"-c", "exec \"$0\" show \"$(printf 'a\\377.mio')\"", program});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.err, QStringLiteral("miolkactl: argument 2 is not valid UTF-8\n"));
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "test_commandline.moc"
