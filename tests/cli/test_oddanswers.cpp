// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/protocol.h"
#include "emulator/virtualdevice.h"
#include "tests/cli/devicetool.h"
#include "tests/support/librarytext.h"
#include "tests/support/peer.h"
#include "tests/support/posix.h"

#include <QtTest>

#include <csignal>
#include <memory>

using support::DeviceTool;
using support::ToolResult;

namespace {

/// A virtual device at a line whose answers the test may replace, and the program with its port.
class OddDevice
{
public:
    /// What is sent instead of the answer to a line; nothing keeps silent.
    using Oddity = std::function<QByteArray(const QByteArray& line, const QByteArray& answer)>;

    OddDevice()
    {
        device.plugged();
        device.loadSettings(support::coachFile);
        original = device.memory(EEPROM);
        setOddity([](const QByteArray&, const QByteArray& answer) { return answer; });
    }

    void setOddity(Oddity oddity)
    {
        peer.setAnswer([this, oddity = std::move(oddity)](const QByteArray& line) {
            return oddity(line, device.answer(line));
        });
    }

    void start(const QStringList& arguments)
    {
        tool = std::make_unique<support::ToolRun>(directory.path());
        tool->start(arguments + QStringList{"--port", peer.path()});
    }

    /// The line is served by the event loop meanwhile.
    ToolResult finish()
    {
        support::waitFor([this] { return tool->process.state() == QProcess::NotRunning; });
        return tool->finish();
    }

    ToolResult run(const QStringList& arguments)
    {
        start(arguments);
        return finish();
    }

    void interrupt() const { ::kill(static_cast<pid_t>(tool->process.processId()), SIGINT); }

    /// While that line, counted from 1, waits for its answer.
    void interruptAt(int line)
    {
        setOddity([this, line](const QByteArray&, const QByteArray& answer) {
            if (peer.lines().size() == line) {
                interrupt();
            }
            return answer;
        });
    }

    [[nodiscard]] QString file(const QString& name) const { return directory.filePath(name); }
    [[nodiscard]] QStringList backups() const
    {
        return QDir(directory.filePath("MIOLKAsoft/backups")).entryList(QDir::Files);
    }

    QTemporaryDir directory;
    cMyVirtualDevice device;
    support::Peer peer;
    std::unique_ptr<support::ToolRun> tool;
    QByteArray original;
};

/// Nothing but records that are asked for is answered by more than this.
QByteArray laconic(const QByteArray& line, const QByteArray& answer, bool& isReading)
{
    isReading = line.startsWith('#') ? line == device::readWord : isReading;
    return isReading && line.startsWith(':') ? answer : QByteArray("OK\r\n");
}

} // namespace

/// Devices that answer otherwise than the virtual one does.
class TestOddAnswers : public QObject
{
    Q_OBJECT

private slots:
    void oneAnswerToAllThatAsksForNothing();
    void wordsAreAnsweredAnyhow();
    void formThatChanges_data();
    void formThatChanges();
    void notUnderstood_data();
    void notUnderstood();
    void interruptedInSilence();
    void interruptedBeforeTheBackup();
    void interruptedBeforeTheFirstRecord();
};

void TestOddAnswers::oneAnswerToAllThatAsksForNothing()
{
    OddDevice odd;
    support::writeFile(odd.file("a.mia"), support::libraryText(QByteArray(1024, 0x55)));
    odd.setOddity([isReading = false](const QByteArray& line, const QByteArray& answer) mutable {
        return laconic(line, answer, isReading);
    });
    const ToolResult status = odd.run({"status"});
    QVERIFY2(status.status == 0, qPrintable(status.err));
    QVERIFY2(status.out.contains("Serial number:         1001\n"), qPrintable(status.out));
    QVERIFY2(status.out.contains("Memory size:           8 MB\n"), qPrintable(status.out));
    const QVector<QStringList> commands = {{"read", odd.file("a.mio")},
                                           {"verify", support::coachFile},
                                           {"write", support::exampleFile, "--yes"},
                                           {"verify", support::exampleFile},
                                           {"upload", odd.file("a.mia"), "--yes"},
                                           {"reset", "--yes"}};
    for (const QStringList& command : commands) {
        const ToolResult result = odd.run(command);
        QVERIFY2(result.status == 0, qPrintable(command.first() + ": " + result.err));
    }
    QCOMPARE(DeviceTool::imageOf(odd.file("a.mio")), odd.original);
    QCOMPARE(odd.device.memory(EEPROM), DeviceTool::stamped(support::exampleFile));
    QVERIFY(odd.device.memory(FLASH).startsWith(QByteArray(1024, 0x55)));
}

/// As long as records are answered by themselves or by records.
void TestOddAnswers::wordsAreAnsweredAnyhow()
{
    OddDevice odd;
    odd.setOddity([count = 0](const QByteArray& line, const QByteArray& answer) mutable {
        const bool isRecord = line.startsWith(':') && line != ":00000001FF";
        return isRecord ? answer : "done " + QByteArray::number(count++) + "\r\n";
    });
    const ToolResult result = odd.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(odd.device.memory(EEPROM), DeviceTool::stamped(support::exampleFile));
}

void TestOddAnswers::formThatChanges_data()
{
    QTest::addColumn<bool>("isLaconic");
    QTest::addColumn<QByteArray>("other");
    QTest::newRow("echo, then garbled") << false << QByteArray(":1002#\r\n");
    QTest::newRow("echo, then a text") << false << QByteArray("OK\r\n");
    QTest::newRow("a text, then another") << true << QByteArray("FAIL\r\n");
}

void TestOddAnswers::formThatChanges()
{
    QFETCH(bool, isLaconic);
    QFETCH(QByteArray, other);
    OddDevice odd;
    odd.setOddity([=, isReading = false](const QByteArray& line, const QByteArray& answer) mutable {
        const QByteArray usual = laconic(line, answer, isReading);
        if (!isReading && line.startsWith(":10008000")) {
            return other;
        }
        return isLaconic ? usual : answer;
    });
    const ToolResult result = odd.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 6, qPrintable(result.err));
    QVERIFY2(result.err.contains("line 13 of 69 (:10008000"), qPrintable(result.err));
    QVERIFY2(result.err.contains("which is no answer to that"), qPrintable(result.err));
    QCOMPARE(odd.peer.lines().constLast(), QString("#ROOT"));
}

void TestOddAnswers::notUnderstood_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("word") << QByteArray("#HEX");
    QTest::newRow("record") << QByteArray(":10");
    QTest::newRow("end") << QByteArray(":00000001FF");
}

void TestOddAnswers::notUnderstood()
{
    QFETCH(QByteArray, line);
    OddDevice odd;
    odd.setOddity([&](const QByteArray& sent, const QByteArray& answer) {
        return sent.startsWith(line) ? QByteArray("?\r\n") : answer;
    });
    const ToolResult result = odd.run({"verify", support::coachFile});
    QVERIFY2(result.status == 6, qPrintable(result.err));
    QVERIFY2(result.err.contains("answers \"?\""), qPrintable(result.err));
    QCOMPARE(odd.peer.lines().constLast(), QString("#ROOT"));
}

void TestOddAnswers::interruptedInSilence()
{
    OddDevice odd;
    odd.setOddity([&odd](const QByteArray& line, const QByteArray& answer) {
        if (line != device::readWord) {
            return answer;
        }
        odd.interrupt();
        return QByteArray();
    });
    const ToolResult result = odd.run({"verify", support::coachFile});
    QVERIFY2(result.status == 130, qPrintable(result.err));
    QVERIFY2(result.err.contains("cancelled; the device does not answer any more"),
             qPrintable(result.err));
    QCOMPARE(odd.peer.lines().constLast(), QString("#ROOT"));
}

void TestOddAnswers::interruptedBeforeTheBackup()
{
    OddDevice odd;
    odd.interruptAt(support::firstWriteLine - 1);
    const ToolResult result = odd.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 130, qPrintable(result.err));
    QVERIFY2(result.err.contains("cancelled before anything was written"), qPrintable(result.err));
    QCOMPARE(odd.device.memory(EEPROM), odd.original);
    QCOMPARE(odd.backups(), QStringList());
}

void TestOddAnswers::interruptedBeforeTheFirstRecord()
{
    OddDevice odd;
    odd.interruptAt(support::firstWrittenRecord - 1);
    const ToolResult result = odd.run({"write", support::exampleFile, "--yes"});
    QVERIFY2(result.status == 130, qPrintable(result.err));
    QVERIFY2(result.err.contains("nothing was changed on the device"), qPrintable(result.err));
    QVERIFY2(!result.err.contains("do not dive"), qPrintable(result.err));
    QCOMPARE(odd.device.memory(EEPROM), odd.original);
    QCOMPARE(odd.backups().size(), 1);
}

QTEST_GUILESS_MAIN(TestOddAnswers)
#include "test_oddanswers.moc"
