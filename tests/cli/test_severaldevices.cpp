// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/devicetool.h"
#include "tests/support/posix.h"
#include "tests/support/preload.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QRegularExpression>
#include <QtTest>

using support::ToolResult;

/// The search for the device, on a USB with any number of them.
class TestSeveralDevices : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { support::allowPreloadedLibraries(); }
    void oneIsFound();
    void severalMustBeNamed();
    void noneIsSaid();
    void bootLoaderIsNoDevice();
    void allAreWritten();
    void worstStatusOfAll();
    void failuresComeBeforeTheQuestion();
    void eachFailureHasItsWayBack();

private:
    ToolResult runWith(const QStringList& emulator, const QStringList& arguments);
    [[nodiscard]] int backups() const
    {
        const QDir kept(m_directory.filePath("MIOLKAsoft/backups"));
        return static_cast<int>(kept.entryList(QDir::Files).size());
    }

    QTemporaryDir m_directory;
};

ToolResult TestSeveralDevices::runWith(const QStringList& emulator, const QStringList& arguments)
{
    support::ToolRun run(m_directory.path());
    run.process.setProgram(QStringLiteral(MIOLKA_BINARY_DIR "/bin/miolka-emulator"));
    return run.run(emulator +
                   QStringList{"--", QStringLiteral(MIOLKA_BINARY_DIR "/bin/miolkactl")} +
                   arguments);
}

void TestSeveralDevices::oneIsFound()
{
    const ToolResult result = runWith({}, {"status", "--json"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    const QJsonObject status = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(status.value("port"), QJsonValue("ttyACM0"));
}

void TestSeveralDevices::severalMustBeNamed()
{
    const ToolResult unnamed = runWith({"--count", "2"}, {"status"});
    QCOMPARE(unnamed.status, 3);
    QVERIFY2(unnamed.err.contains("ttyACM0, ttyACM1"), qPrintable(unnamed.err));
    QVERIFY2(unnamed.err.contains("--port ttyACM0"), qPrintable(unnamed.err));
    for (const char* port : {"ttyACM1", "/dev/ttyACM1"}) {
        const ToolResult named = runWith({"--count", "2"}, {"status", "--port", port});
        QCOMPARE(named.status, 0);
        QVERIFY2(named.out.contains("Serial number:         1002"), qPrintable(named.out));
    }
}

void TestSeveralDevices::noneIsSaid()
{
    for (const QStringList& command :
         {QStringList{"status"}, QStringList{"write", support::exampleFile, "--all", "--yes"}}) {
        const ToolResult result = runWith({"--unplugged", "--foreign"}, command);
        QCOMPARE(result.status, 3);
        QVERIFY2(result.err.contains("no device is attached"), qPrintable(result.err));
        QVERIFY2(result.err.contains("miolkactl doctor"), qPrintable(result.err));
    }
}

void TestSeveralDevices::bootLoaderIsNoDevice()
{
    support::ToolRun run(m_directory.path());
    run.process.setProgram(QStringLiteral(MIOLKA_BINARY_DIR "/bin/miolka-emulator"));
    // It leaves its port for a moment, and no other device is ever attached.
    const QString script =
        QStringLiteral("PATH=%1/bin:$PATH; miolkactl boot --yes || exit 99; "
                       "until miolkactl status 2>&1 | grep -q 'boot loader'; do sleep 0.05; done; "
                       "miolkactl status --port ttyACM0; echo named: $?; "
                       "miolkactl write --all --yes %2; exit $?")
            .arg(QStringLiteral(MIOLKA_BINARY_DIR), support::exampleFile);
    const ToolResult result = run.run({"--", "sh", "-c", script});
    QVERIFY2(result.status == 3, qPrintable(result.err));
    QCOMPARE(result.out, QString("named: 3\n"));
    QCOMPARE(result.err.count("ttyACM0: this device waits in its boot loader"), 2);
}

void TestSeveralDevices::allAreWritten()
{
    const int before = backups();
    const QString trace = m_directory.filePath("trace");
    const ToolResult result = runWith(
        {"--count", "2"}, {"write", support::exampleFile, "--all", "--yes", "--trace", trace});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(result.out, QString("ttyACM0 1001: written, and read back the same\n"
                                 "ttyACM1 1002: written, and read back the same\n"));
    QCOMPARE(backups() - before, 2);
    const QByteArray lines = support::readFile(trace);
    QCOMPARE(lines.count(" > 0 "), support::lastLine);
    QCOMPARE(lines.count(" > 1 "), support::lastLine);
}

void TestSeveralDevices::worstStatusOfAll()
{
    const int before = backups();
    QLockFile held(QStringLiteral("/var/lock/LCK..ttyACM0"));
    QVERIFY(held.tryLock());
    const ToolResult result =
        runWith({"--count", "2"}, {"write", support::exampleFile, "--all", "--yes", "--json"});
    QVERIFY2(result.status == 4, qPrintable(result.err));
    const QJsonArray devices =
        QJsonDocument::fromJson(result.out.toUtf8()).object().value("devices").toArray();
    QCOMPARE(devices.size(), 2);
    QCOMPARE(devices.at(0).toObject().value("status"), QJsonValue(4));
    QCOMPARE(devices.at(0).toObject().value("result"), QJsonValue("failed"));
    QCOMPARE(devices.at(1).toObject().value("status"), QJsonValue(0));
    QCOMPARE(devices.at(1).toObject().value("result"), QJsonValue("written"));
    QCOMPARE(backups() - before, 1);
}

void TestSeveralDevices::failuresComeBeforeTheQuestion()
{
    QLockFile held(QStringLiteral("/var/lock/LCK..ttyACM0"));
    QVERIFY(held.tryLock());
    const ToolResult result = runWith({"--count", "2"}, {"write", support::exampleFile, "--all"});
    QCOMPARE(result.status, 130);
    const auto failure = result.err.indexOf("ttyACM0: the port is in use by another program");
    QVERIFY2(failure >= 0 && failure < result.err.indexOf("[y/N]"), qPrintable(result.err));
    QCOMPARE(result.err.count("is in use by another program"), 1);
    QVERIFY2(result.err.contains("ttyACM0: \"miolkactl doctor\" says more"),
             qPrintable(result.err));
}

void TestSeveralDevices::eachFailureHasItsWayBack()
{
    const int before = backups();
    const ToolResult result =
        runWith({"--count", "2", "--fault", QStringLiteral("vanish-at=%1").arg(100)},
                {"write", support::exampleFile, "--all", "--yes"});
    QVERIFY2(result.status == 6, qPrintable(result.err));
    QCOMPARE(result.out.count(QLatin1Char('\n')), 2);
    QCOMPARE(backups() - before, 2);
    for (const char* port : {"ttyACM0", "ttyACM1"}) {
        const QRegularExpression command(
            QStringLiteral("miolkactl write --restore \\S*/%1-\\S*\\.mio --port %1\n")
                .arg(QLatin1String(port)));
        QVERIFY2(result.err.contains(command), qPrintable(result.err));
    }
}

QTEST_GUILESS_MAIN(TestSeveralDevices)
#include "test_severaldevices.moc"
