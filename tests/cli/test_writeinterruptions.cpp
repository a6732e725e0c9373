// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/devicetool.h"
#include "tests/support/posix.h"

#include <QtTest>

#include <atomic>
#include <memory>
#include <vector>

using support::DeviceTool;
using support::ToolResult;

namespace {

/// As many as wait for a quiet line at the same time.
constexpr int batchSize = 8;

struct Trial
{
    int line = 0;
    DeviceTool tool;
    std::atomic<qint64> process{0};
    ToolResult result;
};

using Trials = std::vector<std::unique_ptr<Trial>>;

/// The command that a message gives, as the user would copy it.
QString wayBack(const QString& messages)
{
    const QString mark = QStringLiteral("write that back with: ");
    const auto start = messages.indexOf(mark);
    return start < 0 ? QString()
                     : messages.mid(start + mark.size()).section(QLatin1Char('\n'), 0, 0);
}

} // namespace

/// However a write ends, what the message says brings back what the device held.
class TestWriteInterruptions : public QObject
{
    Q_OBJECT

private slots:
    void goneAtAnyLine();
    void interruptedAtAnyLine();
    void silentFromALineOn();
    void goneBeforeTheFirstByte();
    void goneBeforeTheFirstRecord();
    void goneWhileReadingBack();
    void wayBackNeedsQuotes();
    void interruptedAtTheQuestion();

private:
    static Trials trials(const std::vector<int>& lines);
    static void writeAll(Trials& trials);
    [[nodiscard]] static QString restoring(const Trial& trial);
    static void checkAll(Trials& trials, int status);
    static void restoreAll(Trials& trials);
    template <typename Spoil>
    static void tryEachLine(int status, const Spoil& spoil);
};

Trials TestWriteInterruptions::trials(const std::vector<int>& lines)
{
    Trials trials;
    for (const int line : lines) {
        trials.push_back(std::make_unique<Trial>());
        trials.back()->line = line;
    }
    return trials;
}

void TestWriteInterruptions::writeAll(Trials& trials)
{
    for (auto& trial : trials) {
        trial->tool.start(
            {"write", support::exampleFile, "--yes", "--trace", trial->tool.file("trace")});
        trial->process = trial->tool.tool.process.processId();
    }
    for (auto& trial : trials) {
        trial->result = trial->tool.tool.finish();
    }
}

/// The command that brings back what the only backup holds.
QString TestWriteInterruptions::restoring(const Trial& trial)
{
    return QStringLiteral("miolkactl write --restore %1 --port %2")
        .arg(trial.tool.backups().constFirst(), trial.tool.tool.process.arguments().constLast());
}

void TestWriteInterruptions::checkAll(Trials& trials, int status)
{
    for (auto& trial : trials) {
        const QByteArray context =
            "line " + QByteArray::number(trial->line) + ": " + trial->result.err.toUtf8();
        QVERIFY2(trial->result.status == status, context.constData());
        const QStringList backups = trial->tool.backups();
        QVERIFY2(backups.size() == 1, context.constData());
        QVERIFY2(DeviceTool::imageOf(backups.constFirst()) == trial->tool.original,
                 context.constData());
        QVERIFY2(wayBack(trial->result.err) == restoring(*trial), context.constData());
        const QByteArray trace = support::readFile(trial->tool.file("trace"));
        QVERIFY2(!trial->result.err.contains("repeat"), context.constData());
        QVERIFY2(status != 130 || trace.endsWith(" < #ROOT\\r\\n\n"), trace.right(200).constData());
    }
}

/// The device comes back at some port, mended.
void TestWriteInterruptions::restoreAll(Trials& trials)
{
    for (auto& trial : trials) {
        trial->tool.mend();
        trial->tool.start({"write", "--restore", trial->tool.backups().constFirst(), "--yes"});
    }
    for (auto& trial : trials) {
        const ToolResult result = trial->tool.tool.finish();
        const QByteArray context =
            "line " + QByteArray::number(trial->line) + ": " + result.err.toUtf8();
        QVERIFY2(result.status == 0, context.constData());
        QVERIFY2(trial->tool.eeprom() == trial->tool.original, context.constData());
    }
}

template <typename Spoil>
void TestWriteInterruptions::tryEachLine(int status, const Spoil& spoil)
{
    for (int first = support::firstWrittenRecord; first <= support::lastWriteLine;
         first += batchSize) {
        std::vector<int> lines;
        for (int line = first; line < first + batchSize && line <= support::lastWriteLine; ++line) {
            lines.push_back(line);
        }
        Trials batch = trials(lines);
        for (auto& trial : batch) {
            spoil(*trial);
        }
        writeAll(batch);
        checkAll(batch, status);
        if (QTest::currentTestFailed()) {
            return;
        }
        for (auto& trial : batch) { // or there would be nothing to bring back
            const bool hasBegun = trial->line > support::firstWrittenRecord + 1;
            QVERIFY(!hasBegun || trial->tool.eeprom() != trial->tool.original);
        }
        restoreAll(batch);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
}

void TestWriteInterruptions::goneAtAnyLine()
{
    tryEachLine(6, [](Trial& trial) {
        trial.tool.setFaults(QStringLiteral("vanish-at=%1").arg(trial.line));
    });
}

void TestWriteInterruptions::interruptedAtAnyLine()
{
    tryEachLine(130, [](Trial& trial) {
        trial.tool.afterLine(
            trial.line, [&trial] { ::kill(static_cast<pid_t>(trial.process.load()), SIGINT); });
    });
}

void TestWriteInterruptions::silentFromALineOn()
{
    Trials silent =
        trials({support::firstWrittenRecord, support::firstWriteLine + 30, support::lastWriteLine});
    for (auto& trial : silent) {
        trial->tool.setFaults(QStringLiteral("silent-after=%1").arg(trial->line - 1));
    }
    writeAll(silent);
    checkAll(silent, 6);
    restoreAll(silent);
}

void TestWriteInterruptions::goneBeforeTheFirstByte()
{
    Trials early = trials({1, support::identityLines, support::firstWriteLine - 1});
    for (auto& trial : early) {
        trial->tool.setFaults(QStringLiteral("vanish-at=%1").arg(trial->line));
    }
    writeAll(early);
    for (auto& trial : early) {
        QCOMPARE(trial->result.status, 6);
        QVERIFY(trial->tool.eeprom() == trial->tool.original);
        QCOMPARE(trial->tool.backups(), QStringList());
        QCOMPARE(wayBack(trial->result.err), QString());
    }
}

void TestWriteInterruptions::goneBeforeTheFirstRecord()
{
    std::vector<int> lines;
    for (int line = support::firstWriteLine; line < support::firstWrittenRecord; ++line) {
        lines.push_back(line);
    }
    Trials early = trials(lines);
    for (auto& trial : early) {
        trial->tool.setFaults(QStringLiteral("vanish-at=%1").arg(trial->line));
    }
    writeAll(early);
    for (auto& trial : early) {
        const QString& messages = trial->result.err;
        QVERIFY2(trial->result.status == 6, qPrintable(messages));
        QVERIFY(trial->tool.eeprom() == trial->tool.original);
        QVERIFY2(messages.contains("nothing was changed on the device"), qPrintable(messages));
        QVERIFY2(!messages.contains("do not dive"), qPrintable(messages));
        QCOMPARE(trial->tool.backups().size(), 1);
        QCOMPARE(wayBack(messages), restoring(*trial));
    }
}

void TestWriteInterruptions::goneWhileReadingBack()
{
    Trials late =
        trials({support::lastWriteLine + 1, support::lastWriteLine + 30, support::lastLine});
    for (auto& trial : late) {
        trial->tool.setFaults(QStringLiteral("vanish-at=%1").arg(trial->line));
    }
    writeAll(late);
    checkAll(late, 6);
    restoreAll(late);
}

void TestWriteInterruptions::wayBackNeedsQuotes()
{
    DeviceTool tool;
    const QString directory = tool.file("diver's own $HOME");
    tool.afterLine(support::firstWriteLine + 40, [&tool] { tool.interrupt(); });
    const ToolResult written =
        tool.run({"write", support::exampleFile, "--yes", "--backup-dir", directory});
    QCOMPARE(written.status, 130);
    QVERIFY(tool.eeprom() != tool.original);

    const QString command = wayBack(written.err) + QStringLiteral(" --yes");
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH",
                       QStringLiteral(MIOLKA_BINARY_DIR "/bin:") + environment.value("PATH"));
    environment.insert("XDG_DATA_HOME", tool.directory.path());
    shell.setProcessEnvironment(environment);
    shell.start("sh", {"-c", command});
    QVERIFY(shell.waitForFinished(support::ToolRun::patience));
    QVERIFY2(shell.exitCode() == 0, qPrintable(command));
    QVERIFY(tool.eeprom() == tool.original);
}

void TestWriteInterruptions::interruptedAtTheQuestion()
{
    DeviceTool tool;
    tool.start({"write", support::exampleFile});
    QByteArray shown;
    QTRY_VERIFY((shown += tool.tool.process.readAllStandardError()).contains("[y/N]"));
    tool.interrupt();
    QVERIFY(tool.tool.process.waitForFinished(support::ToolRun::patience));
    QCOMPARE(tool.tool.process.exitCode(), 130);
    QVERIFY(tool.eeprom() == tool.original);
    QCOMPARE(tool.backups(), QStringList());
}

QTEST_GUILESS_MAIN(TestWriteInterruptions)
#include "test_writeinterruptions.moc"
