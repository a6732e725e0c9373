// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "device/requests.h"
#include "emulator/rulenumbers.h"
#include "tests/emulator/divetest.h"
#include "tests/emulator/emulatortest.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <sys/stat.h>

using support::exchange;
using support::patience;
using support::words;

/// The program itself, and programs behind it that know nothing of it.
class TestEmulator : public support::EmulatorTest
{
    Q_OBJECT

private slots:
    void helpAndVersion();
    void terminalForARealPort();
    void newTerminalWhenPluggedAgain();
    void severalTerminals();
    void stateIsKept();
    void settingsAtTheStart();
    void streamsPassThrough();
    void endsWithItsProgram();
    void pluggingBySignals();
    void pluggingByCommands();
    void faultsAndLatencyByCommands();
    void whatIsSpokenIsPrinted();
    void timeThatPassesWithTheLines();
    void spokenLinesSayWhoseTheyAre();
    void latencyFromTheStart();
    void wrongCommandsAreSaid();
    void resetGoesAndComesBack();
    void bootLoaderUntilPluggedAgain();
    void foreignPort();

private:
    /// Starts it with the program that lists the ports.
    void list(QStringList options, const QStringList& arguments = {});
    void say(const QByteArray& command);
    /// Waits until the lister shows just these.
    bool sees(const QByteArray& ports);
};

namespace {

const QByteArray one = "ttyACM0=03eb:2018";
const QByteArray both = "ttyACM0=03eb:2018 ttyACM1=03eb:2018";

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

/// Settings of 150 samples in a second, whose first three rules speak as it goes on and as a
/// charger comes and goes.
QByteArray speakingSettings()
{
    constexpr int relax = 212;
    const support::DiveSettings settings(
        {{"depthSamplingRate", 1},
         {"messageRule01.condition", static_cast<int>(RuleCondition::SwitchesOn)},
         {"messageRule01.message", relax},
         {"messageRule02.condition", static_cast<int>(RuleCondition::ChargingBegins)},
         {"messageRule02.message", relax},
         {"messageRule03.condition", static_cast<int>(RuleCondition::ChargingEnds)},
         {"messageRule03.message", relax}});
    return support::settingsText(settings.image());
}

/// How long the answer to one line takes, in ms.
qint64 answerTime(const QString& terminal)
{
    QElapsedTimer clock;
    clock.start();
    exchange(terminal, words("#ROOT\r\n"));
    return clock.elapsed();
}

} // namespace

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

void TestEmulator::settingsAtTheStart()
{
    support::writeFile(path("own.mio"), support::settingsText(support::markedImage('f')));
    start({QStringLiteral("--pty"), QStringLiteral("--settings"), path("own.mio")});
    const QStringList zeros = settingsRecords(QByteArray(1024, '\0'));
    QCOMPARE(settingsOf(exchange(QString::fromLatin1(line()), device::readRequest(EEPROM, zeros))),
             support::markedImage('f'));
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

void TestEmulator::whatIsSpokenIsPrinted()
{
    support::writeFile(path("own.mio"), speakingSettings());
    start({QStringLiteral("--pty"), QStringLiteral("--settings"), path("own.mio"),
           QStringLiteral("--control"), path("control"), QStringLiteral("--trace"), path("trace")});
    const QString terminal = QString::fromLatin1(line());
    QCOMPARE(exchange(terminal, words("#SIMUL\r\n")), words("#SIMUL\r\n"));
    QCOMPARE(line(), QByteArray("0.0 s  0.00 m  rule 1: Relax yourself"));
    const QByteArray trace = support::readFile(path("trace"));
    QVERIFY2(trace.contains(" * 0.0 s  0.00 m  rule 1: Relax yourself\n"), trace.constData());
    say("charge on");
    QVERIFY(line().endsWith(" s  0.00 m  rule 2: Relax yourself"));
    say("charge off");
    QVERIFY(line().endsWith(" s  0.00 m  rule 3: Relax yourself"));
}

void TestEmulator::timeThatPassesWithTheLines()
{
    support::writeFile(path("own.mio"), speakingSettings());
    start({QStringLiteral("--pty"), QStringLiteral("--settings"), path("own.mio"),
           QStringLiteral("--control"), path("control"), QStringLiteral("--line-time"),
           QStringLiteral("30000")});
    const QString terminal = QString::fromLatin1(line());
    exchange(terminal, words("#SIMUL\r\n"));
    QCOMPARE(line(), QByteArray("0.0 s  0.00 m  rule 1: Relax yourself"));
    const auto charge = [this](const QByteArray& state) {
        say("charge " + state + "\nbogus"); // when the one is refused, the other is done
        QByteArray error;
        QTRY_VERIFY((error += m_emulator->readAllStandardError()).endsWith("bogus\n"));
    };
    charge("on");
    exchange(terminal, words("#HEX\r\n"));
    QCOMPARE(line(), QByteArray("0.0 s  0.00 m  rule 2: Relax yourself"));
    charge("off");
    exchange(terminal, words("#HEX\r\n"));
    QCOMPARE(line(), QByteArray("30.0 s  0.00 m  rule 3: Relax yourself"));
}

void TestEmulator::spokenLinesSayWhoseTheyAre()
{
    support::writeFile(path("own.mio"), speakingSettings());
    start({QStringLiteral("--pty"), QStringLiteral("--count"), QStringLiteral("2"),
           QStringLiteral("--settings"), path("own.mio")});
    line();
    exchange(QString::fromLatin1(line()), words("#SIMUL\r\n"));
    QCOMPARE(line(), QByteArray("1 0.0 s  0.00 m  rule 1: Relax yourself"));
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
    QTRY_VERIFY(answerTime(terminal) >= 298);
    m_emulator->terminate();
    QVERIFY(m_emulator->waitForFinished(patience));
    QVERIFY(QFileInfo::exists(path("control"))); // it was there before
}

void TestEmulator::latencyFromTheStart()
{
    start(words("--pty --latency 300"));
    QVERIFY(answerTime(QString::fromLatin1(line())) >= 298);
}

void TestEmulator::wrongCommandsAreSaid()
{
    start({QStringLiteral("--pty"), QStringLiteral("--control"), path("control")});
    line();
    for (const char* command :
         {"bogus", "plug x", "plug 1", "unplug -1", "plug 0 0", "fault", "fault bogus", "latency",
          "latency -1", "latency 1 2", "charge", "charge maybe", "charge on off"}) {
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
