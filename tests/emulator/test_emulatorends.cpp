// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/emulator/emulatortest.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QLibrary>

#include <dlfcn.h>
#include <sys/stat.h>

using support::exchange;
using support::patience;
using support::words;

/// What the program cannot do, what it says of that, and how it ends.
class TestEmulatorEnds : public support::EmulatorTest
{
    Q_OBJECT

private slots:
    void badCommandLines_data();
    void badCommandLines();
    void hostileStateIsRefused();
    void pipesAreNoTraces();
    void aTraceThatDoesNotFit();
    void exitStatus_data();
    void exitStatus();
    void withoutTheLibrary();
    void withoutItsOtherHalf();
    void withoutATemporaryDirectory();
    void withoutFilesToOpen();
    void aReaderThatLeft();
    void ignoredSignals();
    void aProgramThatDoesNotEnd();
    void argumentsPassThrough();
    void argumentsThatAreNoText();

private:
    /// The emulator behind a shell command, which names it "$0" and what comes after it "$@".
    void shell(const char* command, const QStringList& arguments);
    /// It fails with this status, says a line in which the words stand, and nothing else.
    void fails(int status, const QByteArray& named);
};

void TestEmulatorEnds::shell(const char* command, const QStringList& arguments)
{
    m_emulator->setProcessEnvironment(m_environment);
    m_emulator->start(QStringLiteral("sh"),
                      QStringList{QStringLiteral("-c"), QString::fromLatin1(command),
                                  QStringLiteral(MIOLKA_EMULATOR)} +
                          arguments);
    QVERIFY(m_emulator->waitForStarted(patience));
}

void TestEmulatorEnds::fails(int status, const QByteArray& named)
{
    QCOMPARE(end(), status);
    const QByteArray error = m_emulator->readAllStandardError();
    QVERIFY2(error.startsWith("miolka-emulator: ") && error.count('\n') == 1, error.constData());
    QVERIFY2(error.contains(named), error.constData());
    QVERIFY(m_emulator->readAllStandardOutput().isEmpty());
}

void TestEmulatorEnds::badCommandLines_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("named");
    const auto row = [](const char* arguments, const char* named) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << QByteArray(named);
    };
    row("", "PROGRAM");
    row("--", "PROGRAM");
    row("--pty -- true", "--pty");
    row("--pty --foreign", "--foreign");
    row("--bogus", "bogus");
    row("--pty --latency", "latency");
    row("--pty --latency -1", "--latency");
    row("--pty --latency soon", "--latency");
    row("--pty --latency 60001", "--latency");
    row("--pty --line-time 0", "--line-time");
    row("--pty --line-time 60001", "--line-time");
    row("--pty --count 0", "--count");
    row("--pty --count 17", "--count");
    row("--pty --seed x", "--seed");
    row("--pty --seed 4294967296", "--seed");
    row("--pty --fault bogus", "--fault");
    row("--pty --fault split --fault garbage=2", "--fault");
    row("--pty --settings /no/such/file.mio", "--settings");
    row("--pty --trace /no/such/directory/trace", "--trace");
    row("--pty --control /no/such/directory/pipe", "--control");
    row("--pty --control /dev/null", "--control");
    row("--pty --state /dev/null", "--state");
    row("--pty --state=", "--state");
    row("--pty --state /no/such/directory/state", "--state");
    row("--pty --trace /dev/null", "--trace");
}

void TestEmulatorEnds::badCommandLines()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, named);
    start(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    fails(2, named);
}

void TestEmulatorEnds::hostileStateIsRefused()
{
    support::writeFile(path("state"), QByteArray(100000, 'x'));
    start({QStringLiteral("--pty"), QStringLiteral("--state"), path("state")});
    fails(2, "--state");
    QCOMPARE(support::readFile(path("state")), QByteArray(100000, 'x'));
}

void TestEmulatorEnds::pipesAreNoTraces()
{
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    start({QStringLiteral("--pty"), QStringLiteral("--trace"), path("pipe")});
    fails(2, "--trace");
}

void TestEmulatorEnds::aTraceThatDoesNotFit()
{
    shell(R"(trap '' XFSZ; ulimit -f 0; exec "$0" "$@")",
          {QStringLiteral("--pty"), QStringLiteral("--trace"), path("trace")});
    QCOMPARE(exchange(QString::fromLatin1(line()), words("#ROOT\r\n")).size(), 1);
    kill(SIGTERM);
    fails(1, "--trace");
}

void TestEmulatorEnds::exitStatus_data()
{
    QTest::addColumn<QStringList>("program");
    QTest::addColumn<int>("status");
    const QString shell = QStringLiteral("sh");
    const QString command = QStringLiteral("-c");
    QTest::newRow("success") << words("true") << 0;
    QTest::newRow("status") << QStringList{shell, command, QStringLiteral("exit 42")} << 42;
    QTest::newRow("signal") << QStringList{shell, command, QStringLiteral("kill -9 $$")} << 128 + 9;
    QTest::newRow("missing") << words("/no/such/program") << 127;
}

void TestEmulatorEnds::exitStatus()
{
    QFETCH(QStringList, program);
    QFETCH(int, status);
    QCOMPARE(run(QStringList{QStringLiteral("--")} + program), status);
}

void TestEmulatorEnds::withoutTheLibrary()
{
    support::writeFile(path("libumockdev.so.0"), "no library");
    m_environment.insert(QStringLiteral("LD_LIBRARY_PATH"), m_directory->path());
    start(words("-- echo"));
    fails(1, "umockdev");
}

void TestEmulatorEnds::withoutItsOtherHalf()
{
    QLibrary library(QStringLiteral("umockdev"), 0);
    Dl_info info = {};
    QVERIFY(dladdr(reinterpret_cast<void*>(library.resolve("umockdev_testbed_new")), &info) != 0);
    QVERIFY(QFile::copy(QFile::decodeName(info.dli_fname), path("libumockdev.so.0")));
    m_environment.insert(QStringLiteral("LD_LIBRARY_PATH"), m_directory->path());
    start(words("-- echo"));
    fails(1, "umockdev");
}

void TestEmulatorEnds::withoutATemporaryDirectory()
{
    m_environment.insert(QStringLiteral("TMPDIR"), path("missing"));
    start(words("-- echo"));
    fails(1, "TMPDIR");
}

void TestEmulatorEnds::withoutFilesToOpen()
{
    // The devices need three each: the terminal, its other side, and what watches it.
    shell(R"(ulimit -n 32; exec "$0" "$@")", words("--pty --count 16"));
    QCOMPARE(end(), 1);
    QVERIFY(m_emulator->readAllStandardError().contains("pseudo-terminal"));
}

void TestEmulatorEnds::aReaderThatLeft()
{
    start({QStringLiteral("--pty"), QStringLiteral("--state"), path("state")});
    line();
    m_emulator->closeReadChannel(QProcess::StandardOutput);
    kill(SIGUSR1);
    QTRY_VERIFY(QFileInfo::exists(path("state")));
    QVERIFY(QFile::remove(path("state")));
    kill(SIGUSR2); // prints to nobody
    kill(SIGTERM);
    QCOMPARE(end(), 0);
    QVERIFY(QFileInfo::exists(path("state")));
}

void TestEmulatorEnds::ignoredSignals()
{
    shell(R"(trap '' HUP; exec "$0" "$@")", words("--pty"));
    const QString terminal = QString::fromLatin1(line());
    kill(SIGHUP);
    QCOMPARE(exchange(terminal, words("#ROOT\r\n")).size(), 1);
    QCOMPARE(m_emulator->state(), QProcess::Running);
    kill(SIGTERM);
    QCOMPARE(end(), 0);
}

void TestEmulatorEnds::aProgramThatDoesNotEnd()
{
    start({QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
           QStringLiteral("trap '' TERM; echo ready; while :; do read nothing; done")});
    QCOMPARE(line(), QByteArray("ready"));
    kill(SIGTERM);
    QCOMPARE(end(), 128 + SIGKILL);
}

void TestEmulatorEnds::argumentsPassThrough()
{
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    shell(R"sh(exec "$0" -- printf '%s' "$(printf 'z\305\274')")sh", {});
    QCOMPARE(end(), 0);
    QCOMPARE(m_emulator->readAllStandardOutput(), QByteArray("z\xC5\xBC"));
}

void TestEmulatorEnds::argumentsThatAreNoText()
{
    shell(R"sh(exec "$0" -- echo "$(printf 'a\377')")sh", {});
    fails(2, "argument 3");
}

QTEST_GUILESS_MAIN(TestEmulatorEnds)
#include "test_emulatorends.moc"
