// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "device/requests.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QDir>
#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <sys/stat.h>

/// The program itself, and programs behind it that know nothing of it.
class TestEmulator : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void helpAndVersion();
    void badCommandLines_data();
    void badCommandLines();
    void terminalForARealPort();
    void newTerminalWhenPluggedAgain();
    void severalTerminals();
    void stateIsKept();
    void hostileStateIsRefused();
    void settingsAtTheStart();
    void exitStatus_data();
    void exitStatus();
    void streamsPassThrough();
    void endsWithItsProgram();
    void pluggingBySignals();
    void pluggingByCommands();
    void faultsAndLatencyByCommands();
    void wrongCommandsAreSaid();
    void resetGoesAndComesBack();
    void bootLoaderUntilPluggedAgain();
    void foreignPort();

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory->filePath(QString::fromLatin1(name));
    }
    void start(const QStringList& arguments);
    /// Runs it to its end.
    int run(const QStringList& arguments);
    /// Starts it with the program that lists the ports.
    void list(QStringList options, const QStringList& arguments = {});
    void say(const QByteArray& command);
    void kill(int number) const { ::kill(static_cast<pid_t>(m_emulator->processId()), number); }
    /// The next line of the output.
    QByteArray line();
    /// Waits until the lister shows just these.
    bool sees(const QByteArray& ports);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_emulator;
};

namespace {

constexpr int patience = 20000; // ms

const QByteArray one = "ttyACM0=03eb:2018";
const QByteArray both = "ttyACM0=03eb:2018 ttyACM1=03eb:2018";

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QByteArray settingsOf(const QStringList& replies)
{
    QByteArray bytes;
    for (const cMyReadRecord& record : device::readRecords(replies)) {
        bytes +=
            QByteArray(reinterpret_cast<const char*>(record.data.constData()), record.data.size());
    }
    return bytes;
}

QStringList settingsRecords(const QByteArray& image)
{
    return QString::fromLatin1(support::settingsText(image)).split(QLatin1Char('\n'));
}

/// The replies of a port to an exchange; what does not come in time is missing.
QStringList exchange(const QString& terminal, const QStringList& lines)
{
    QStringList replies;
    QSerialPort port(terminal);
    if (!port.open(QIODevice::ReadWrite)) {
        return {port.errorString()};
    }
    for (const QString& text : lines) {
        port.write(text.toLatin1());
        while (!port.canReadLine()) {
            if (!port.waitForReadyRead(patience)) {
                return replies;
            }
        }
        replies.append(QString::fromLatin1(port.readLine()));
    }
    return replies;
}

} // namespace

void TestEmulator::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_emulator = std::make_unique<QProcess>();
}

void TestEmulator::cleanup()
{
    if (m_emulator->state() != QProcess::NotRunning) {
        m_emulator->terminate();
        QVERIFY(m_emulator->waitForFinished(patience));
    }
    // What the mocked ports are made of lies in the temporary directory meanwhile.
    QCOMPARE(QDir(path("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

void TestEmulator::start(const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QDir(m_directory->path()).mkpath(QStringLiteral("tmp"));
    environment.insert(QStringLiteral("TMPDIR"), path("tmp"));
    m_emulator->setProcessEnvironment(environment);
    m_emulator->start(QStringLiteral(MIOLKA_EMULATOR), arguments);
    QVERIFY(m_emulator->waitForStarted(patience));
}

int TestEmulator::run(const QStringList& arguments)
{
    start(arguments);
    return m_emulator->waitForFinished(patience) ? m_emulator->exitCode() : -1;
}

void TestEmulator::list(QStringList options, const QStringList& arguments)
{
    options << QStringLiteral("--") << QStringLiteral(MIOLKA_PORTLISTER) << arguments;
    start(options);
}

void TestEmulator::say(const QByteArray& command)
{
    const QString control = path("control");
    QTRY_VERIFY(QFileInfo::exists(control));
    QFile pipe(control);
    QVERIFY(pipe.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(pipe.write(command + '\n'), qint64(command.size() + 1));
}

QByteArray TestEmulator::line()
{
    const QDeadlineTimer deadline(patience);
    while (!m_emulator->canReadLine() && !deadline.hasExpired()) {
        m_emulator->waitForReadyRead(100);
    }
    return m_emulator->readLine().trimmed();
}

bool TestEmulator::sees(const QByteArray& ports)
{
    const QDeadlineTimer deadline(patience);
    QByteArray last;
    while (!deadline.hasExpired()) {
        last = line();
        if (last == (ports.isEmpty() ? QByteArray("ports") : "ports " + ports)) {
            return true;
        }
    }
    qWarning("it sees %s", last.constData());
    return false;
}

void TestEmulator::helpAndVersion()
{
    QCOMPARE(run({QStringLiteral("--help")}), 0);
    const QByteArray help = m_emulator->readAllStandardOutput();
    for (const char* option : {"--pty", "--settings", "--state", "--latency", "--trace", "--fault",
                               "--seed", "--control", "--count", "--unplugged", "--foreign"}) {
        QVERIFY2(help.contains(option), option);
    }
    QCOMPARE(run({QStringLiteral("--version")}), 0);
    QCOMPARE(m_emulator->readAllStandardOutput().trimmed(),
             QByteArray("miolka-emulator " MIOLKA_VERSION));
}

void TestEmulator::badCommandLines_data()
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
}

void TestEmulator::badCommandLines()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, named);
    QCOMPARE(run(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts)), 2);
    const QByteArray error = m_emulator->readAllStandardError();
    QVERIFY2(error.startsWith("miolka-emulator: "), error.constData());
    QVERIFY2(error.contains(named), error.constData());
    QVERIFY(m_emulator->readAllStandardOutput().isEmpty());
}

void TestEmulator::terminalForARealPort()
{
    start({QStringLiteral("--pty"), QStringLiteral("--trace"), path("trace")});
    const QString terminal = QString::fromLatin1(line());
    QVERIFY(terminal.startsWith(QLatin1String("/dev/")));
    const QStringList zeros = settingsRecords(QByteArray(1024, '\0'));
    QCOMPARE(settingsOf(exchange(terminal, device::readRequest(EEPROM, zeros))),
             support::templateImage());
    const QByteArray own = support::markedImage('e');
    const QStringList request = device::writeRequest(EEPROM, settingsRecords(own));
    QCOMPARE(exchange(terminal, request), request);
    QCOMPARE(settingsOf(exchange(terminal, device::readRequest(EEPROM, zeros))), own);
    QVERIFY(support::readFile(path("trace")).contains(R"( > #ROOT\r\n)"));
    kill(SIGINT);
    QVERIFY(m_emulator->waitForFinished(patience));
    QCOMPARE(m_emulator->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_emulator->exitCode(), 0);
    QVERIFY(!QFileInfo::exists(terminal));
}

void TestEmulator::newTerminalWhenPluggedAgain()
{
    start({QStringLiteral("--pty"), QStringLiteral("--fault"), QStringLiteral("vanish-at=1")});
    const QString first = QString::fromLatin1(line());
    QCOMPARE(exchange(first, words("#ROOT\r\n")), QStringList());
    kill(SIGUSR2);
    const QString second = QString::fromLatin1(line());
    QCOMPARE(exchange(second, {QStringLiteral("#ROOT\r\n")}).size(), 1);
    kill(SIGUSR1);
    QTRY_VERIFY(!QFileInfo::exists(second));
    kill(SIGUSR2);
    QCOMPARE(exchange(QString::fromLatin1(line()), {QStringLiteral("#ROOT\r\n")}).size(), 1);
}

void TestEmulator::severalTerminals()
{
    start(words("--pty --count 3"));
    QStringList serialNumbers;
    for (int i = 0; i < 3; ++i) {
        const QStringList replies = exchange(QString::fromLatin1(line()), device::statusRequest());
        serialNumbers.append(device::statusTexts(replies).at(device::SerialNumber));
    }
    QCOMPARE(serialNumbers.removeDuplicates(), 0);
    QVERIFY(!serialNumbers.contains(QStringLiteral("0")));
}

void TestEmulator::stateIsKept()
{
    const QStringList options = {QStringLiteral("--pty"), QStringLiteral("--state"), path("state")};
    const QByteArray own = support::markedImage('s');
    const QStringList zeros = settingsRecords(QByteArray(1024, '\0'));
    start(options);
    exchange(QString::fromLatin1(line()), device::writeRequest(EEPROM, settingsRecords(own)));
    QVERIFY(!QFileInfo::exists(path("state")));
    kill(SIGUSR1);
    QTRY_VERIFY(QFileInfo::exists(path("state")));
    m_emulator->kill(); // so that only what was saved when unplugged is there
    QVERIFY(m_emulator->waitForFinished(patience));
    start(options);
    QCOMPARE(settingsOf(exchange(QString::fromLatin1(line()), device::readRequest(EEPROM, zeros))),
             own);
}

void TestEmulator::hostileStateIsRefused()
{
    support::writeFile(path("state"), QByteArray(100000, 'x'));
    QCOMPARE(run({QStringLiteral("--pty"), QStringLiteral("--state"), path("state")}), 2);
    QVERIFY(m_emulator->readAllStandardError().contains("--state"));
    QCOMPARE(support::readFile(path("state")), QByteArray(100000, 'x'));
}

void TestEmulator::settingsAtTheStart()
{
    support::writeFile(path("own.mio"), support::settingsText(support::markedImage('f')));
    start({QStringLiteral("--pty"), QStringLiteral("--settings"), path("own.mio")});
    const QStringList zeros = settingsRecords(QByteArray(1024, '\0'));
    QCOMPARE(settingsOf(exchange(QString::fromLatin1(line()), device::readRequest(EEPROM, zeros))),
             support::markedImage('f'));
}

void TestEmulator::exitStatus_data()
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

void TestEmulator::exitStatus()
{
    QFETCH(QStringList, program);
    QFETCH(int, status);
    QCOMPARE(run(QStringList{QStringLiteral("--")} + program), status);
}

void TestEmulator::streamsPassThrough()
{
    start({QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
           QStringLiteral("read word; echo out $word; echo err $word >&2; echo \"$1\""),
           QStringLiteral("sh"), QStringLiteral("--help")});
    m_emulator->write("hello\n");
    QVERIFY(m_emulator->waitForFinished(patience));
    QCOMPARE(m_emulator->readAllStandardOutput(), QByteArray("out hello\n--help\n"));
    QCOMPARE(m_emulator->readAllStandardError(), QByteArray("err hello\n"));
}

void TestEmulator::endsWithItsProgram()
{
    list({});
    QVERIFY(sees(one));
    m_emulator->terminate();
    QVERIFY(m_emulator->waitForFinished(patience));
    QCOMPARE(m_emulator->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_emulator->exitCode(), 128 + SIGTERM);
}

void TestEmulator::pluggingBySignals()
{
    list(words("--unplugged --count 2"));
    QVERIFY(sees({}));
    kill(SIGUSR2);
    QVERIFY(sees(both));
    kill(SIGUSR1);
    QVERIFY(sees({}));
    kill(SIGUSR2);
    QVERIFY(sees(both));
}

void TestEmulator::pluggingByCommands()
{
    list({QStringLiteral("--count"), QStringLiteral("2"), QStringLiteral("--control"),
          path("control")});
    QVERIFY(sees(both));
    say("unplug 0");
    QVERIFY(sees("ttyACM1=03eb:2018"));
    say("unplug");
    QVERIFY(sees({}));
    say("plug 0");
    QVERIFY(sees(one));
    say("unplug\nplug");
    QVERIFY(sees(both));
    m_emulator->terminate();
    QVERIFY(m_emulator->waitForFinished(patience));
    QVERIFY(!QFileInfo::exists(path("control")));
}

void TestEmulator::faultsAndLatencyByCommands()
{
    const QByteArray control = QFile::encodeName(path("control"));
    QCOMPARE(mkfifo(control.constData(), 0600), 0);
    start({QStringLiteral("--pty"), QStringLiteral("--control"), path("control")});
    const QString terminal = QString::fromLatin1(line());
    const QStringList root = {QStringLiteral("#ROOT\r\n")};
    say("fault long=1");
    QTRY_COMPARE(exchange(terminal, root).join(QString()).size(), 100002);
    say("fault none");
    QTRY_COMPARE(exchange(terminal, root), root);
    say("latency 300");
    const auto answerTime = [&] {
        QElapsedTimer clock;
        clock.start();
        exchange(terminal, root);
        return clock.elapsed();
    };
    QTRY_VERIFY(answerTime() >= 298);
    m_emulator->terminate();
    QVERIFY(m_emulator->waitForFinished(patience));
    QVERIFY(QFileInfo::exists(path("control"))); // it was there before
}

void TestEmulator::wrongCommandsAreSaid()
{
    start({QStringLiteral("--pty"), QStringLiteral("--control"), path("control")});
    line();
    for (const char* command : {"bogus", "plug x", "plug 1", "unplug -1", "plug 0 0", "fault",
                                "fault bogus", "latency", "latency -1", "latency 1 2"}) {
        say(command);
        QByteArray error;
        QTRY_VERIFY((error += m_emulator->readAllStandardError()).endsWith('\n'));
        QCOMPARE(error, QByteArray("miolka-emulator: command not understood: ") + command + '\n');
    }
}

void TestEmulator::resetGoesAndComesBack()
{
    list({}, words("send #RESET ttyACM0"));
    QCOMPARE(line(), QByteArray("answer #RESET"));
    QVERIFY(sees({}));
    QElapsedTimer away;
    away.start();
    QVERIFY(sees(one));
    QVERIFY(away.elapsed() > 500);
}

void TestEmulator::bootLoaderUntilPluggedAgain()
{
    list({QStringLiteral("--control"), path("control")}, words("send #BOOT ttyACM0"));
    QCOMPARE(line(), QByteArray("answer #BOOT"));
    QVERIFY(sees({}));
    QVERIFY(sees("ttyACM0=03eb:2ff0"));
    say("unplug");
    QVERIFY(sees({}));
    say("plug");
    QVERIFY(sees(one));
}

void TestEmulator::foreignPort()
{
    list({QStringLiteral("--foreign"), QStringLiteral("--trace"), path("trace")},
         words("send #ROOT ttyUSB0"));
    QCOMPARE(line(), QByteArray("no answer"));
    const QByteArray trace = support::readFile(path("trace"));
    QVERIFY2(trace.endsWith(R"( > 1 #ROOT\r\n)"
                            "\n") &&
                 trace.count('\n') == 1,
             trace.constData());
    QVERIFY(sees(one + " ttyUSB0=0403:6001"));
    kill(SIGUSR1);
    QVERIFY(sees("ttyUSB0=0403:6001"));
}

QTEST_GUILESS_MAIN(TestEmulator)
#include "test_emulator.moc"
