// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"
#include "tests/cli/devicetool.h"
#include "tests/support/librarytext.h"
#include "tests/support/posix.h"

#include <QtTest>

namespace {

constexpr int notCompared = 300; ///< an address in the settings, of a rule

/// One run of the program: what is wrong, what is asked for, and how it has to end.
struct Run
{
    const char* name;
    QStringList arguments; ///< {mine}, {new} and so on stand for files
    int status;
    const char* faults;
    const char* input;
    bool storesWrongly;
};

Run run(const char* name, const QStringList& arguments, int status = 0)
{
    return {name, arguments, status, "none", "", false};
}

Run faulty(const char* name, const QStringList& arguments, int status, const char* faults)
{
    return {name, arguments, status, faults, "", false};
}

QVector<Run> runs()
{
    QVector<Run> runs = {
        run("status", {"status"}),
        run("show", {"show", "device"}),
        run("get", {"get", "device", "volume"}),
        run("set", {"set", "{mine}", "volume=1"}),
        run("diff", {"diff", "{mine}", "{mine}"}),
        run("check", {"check", "{mine}"}),
        run("new", {"new", "{new}"}),
        run("rehearse", {"rehearse", "device", "--profile", "freedive"}),
        run("read", {"read", "{new}"}),
        run("write", {"write", "{mine}", "--yes"}),
        run("verify", {"verify", "{held}"}),
        run("upload", {"upload", "{library}", "--yes"}),
        run("reset", {"reset", "--yes"}),
        run("clear-stats", {"clear-stats", "--yes"}),
        run("power-off", {"power-off", "--yes"}),
        run("boot", {"boot", "--yes"}),
        run("verify, differs", {"verify", "{mine}"}, 1),
        run("diff, differs", {"diff", "device", "default"}, 1),
        run("unknown field", {"get", "default", "depth"}, 2),
        run("unknown profile", {"rehearse", "default", "-p", "{new}"}, 5),
        run("no such port", {"status", "--port", "/dev/ttyACM999"}, 3),
        run("no such file", {"write", "{new}", "--yes"}, 5),
        run("no library", {"upload", "{mine}", "--yes"}, 5),
        run("file is there", {"read", "{mine}"}, 5),
        faulty("device goes in status", {"status"}, 6, "vanish-at=20"),
        faulty("device goes in read", {"read", "{new}"}, 6, "vanish-at=40"),
        faulty("device goes in write", {"write", "{mine}", "--yes"}, 6, "vanish-at=100"),
        faulty("device goes in verify", {"verify", "{mine}"}, 6, "vanish-at=9"),
        faulty("device goes in upload", {"upload", "{library}", "--yes"}, 6, "vanish-at=11"),
        faulty("wrong sums", {"read", "{new}"}, 6, "bad-checksum=1"),
        faulty("nonsense", {"show", "device"}, 6, "garbage=1"),
    };
    runs.append({"stores wrongly", {"write", "{mine}"}, 7, "none", "y\nn\n", true});
    for (const char* command : {"reset", "clear-stats", "power-off", "boot"}) {
        runs.append(run(command, {command}, 130));
    }
    runs.append(run("write, not wanted", {"write", "{mine}"}, 130));
    runs.append(run("upload, not wanted", {"upload", "{library}"}, 130));
    return runs;
}

} // namespace

class TestEveryCommand : public QObject
{
    Q_OBJECT

private slots:
    void everyCommandEndsAsItShould_data();
    void everyCommandEndsAsItShould();
    void everyCommandAndStatusIsTried();
};

void TestEveryCommand::everyCommandEndsAsItShould_data()
{
    QTest::addColumn<int>("row");
    const QVector<Run> all = runs();
    for (int row = 0; row < all.size(); ++row) {
        QTest::newRow(qPrintable(
            QStringLiteral("%1: %2").arg(QLatin1String(all.at(row).name)).arg(all.at(row).status)))
            << row;
    }
}

void TestEveryCommand::everyCommandEndsAsItShould()
{
    QFETCH(int, row);
    const Run each = runs().at(row);
    support::DeviceTool tool;
    QHash<QString, QString> files = {{"{new}", tool.file("new.mio")},
                                     {"{mine}", tool.file("mine.mio")},
                                     {"{held}", support::coachFile},
                                     {"{library}", tool.file("library.mia")}};
    QVERIFY(QFile::copy(support::exampleFile, files["{mine}"]));
    support::writeFile(files["{library}"], support::libraryText(QByteArray(1024, 0x55)));
    tool.setFaults(QLatin1String(each.faults));
    if (each.storesWrongly) {
        tool.afterLine(support::lastWriteLine, [&] { tool.storeWrongly(notCompared); });
    }
    QStringList arguments;
    for (const QString& argument : each.arguments) {
        arguments.append(files.value(argument, argument));
    }
    const support::ToolResult result = arguments.contains("--port")
                                           ? tool.tool.run(arguments, each.input)
                                           : tool.run(arguments, each.input);
    QVERIFY2(result.status == each.status, qPrintable(result.err));
    if (each.status > 1) {
        QVERIFY2(result.err.contains("miolkactl: ") || result.err.contains("[y/N]"),
                 qPrintable(result.err));
    }
}

/// All but those that look for ports, which have tests of their own, and a port in use, which needs
/// another program.
void TestEveryCommand::everyCommandAndStatusIsTried()
{
    QSet<QString> commands = {"ports", "doctor"};
    QSet<int> statuses = {static_cast<int>(cli::ExitStatus::NotAllowed)};
    for (const Run& each : runs()) {
        statuses.insert(each.status);
        if (each.status == 0) {
            commands.insert(each.arguments.first());
        }
    }
    for (const cMyCommand& command : cli::commands()) {
        QVERIFY2(commands.contains(command.name), command.name);
    }
    for (const auto& each : cli::exitStatuses()) {
        QVERIFY2(statuses.contains(static_cast<int>(each.status)), each.meaning);
    }
}

QTEST_GUILESS_MAIN(TestEveryCommand)
#include "test_everycommand.moc"
