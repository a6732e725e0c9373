// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/console.h"
#include "cli/system/interruption.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <array>
#include <csignal>
#include <memory>

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Volume = cMyConsole::Volume;
using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

const QByteArray eraseLine = "\r\x1B[K";

Stream streamOf(int descriptor, const char* mode)
{
    return {fdopen(descriptor, mode), std::fclose};
}

/// What has arrived by now.
QByteArray readAll(int descriptor)
{
    std::array<char, 65536> buffer{};
    QByteArray all;
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    for (ssize_t size = 1; size > 0;) {
        size = read(descriptor, buffer.data(), buffer.size());
        all.append(buffer.data(), size > 0 ? static_cast<int>(size) : 0);
    }
    return all;
}

/// Whether the process waits for something.
bool isAsleep(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(") S ");
}

/// A console whose outputs end in pipes, and whose input is a text.
class PipedConsole
{
public:
    explicit PipedConsole(const QByteArray& input = {})
    {
        if (pipe(m_in.data()) != 0 || pipe(m_out.data()) != 0 || pipe(m_err.data()) != 0 ||
            write(m_in[1], input.constData(), static_cast<std::size_t>(input.size())) < 0) {
            qFatal("no pipes");
        }
        close(m_in[1]);
        m_input = streamOf(m_in[0], "r");
        m_output = streamOf(m_out[1], "w");
        m_errors = streamOf(m_err[1], "w");
        console = std::make_unique<cMyConsole>(m_input.get(), m_output.get(), m_errors.get());
    }
    ~PipedConsole()
    {
        console.reset();
        close(m_out[0]);
        close(m_err[0]);
    }
    Q_DISABLE_COPY_MOVE(PipedConsole)

    [[nodiscard]] QByteArray out() const { return readAll(m_out[0]); }
    [[nodiscard]] QByteArray err() const { return readAll(m_err[0]); }

    std::unique_ptr<cMyConsole> console;

private:
    std::array<int, 2> m_in{};
    std::array<int, 2> m_out{};
    std::array<int, 2> m_err{};
    Stream m_input{nullptr, std::fclose};
    Stream m_output{nullptr, std::fclose};
    Stream m_errors{nullptr, std::fclose};
};

/// A console whose messages go to a terminal of that many columns.
class TerminalConsole
{
public:
    explicit TerminalConsole(unsigned short columns)
    {
        winsize size = {};
        size.ws_col = columns;
        int terminal = -1;
        if (openpty(&m_screen, &terminal, nullptr, nullptr, &size) != 0) {
            qFatal("no terminal");
        }
        m_errors = streamOf(terminal, "w");
        console = std::make_unique<cMyConsole>(stdin, stdout, m_errors.get());
    }
    ~TerminalConsole()
    {
        console.reset();
        m_errors.reset();
        close(m_screen);
    }
    Q_DISABLE_COPY_MOVE(TerminalConsole)

    [[nodiscard]] QByteArray screen() const { return readAll(m_screen); }

    std::unique_ptr<cMyConsole> console;

private:
    int m_screen = -1;
    Stream m_errors{nullptr, std::fclose};
};

} // namespace

class TestConsole : public QObject
{
    Q_OBJECT

private slots:
    void whatIsPrintable_data();
    void whatIsPrintable();
    void jsonReadsBackAndCommandsNoTerminal();
    void jsonComesInEveryCase();
    void theTimeLeft_data();
    void theTimeLeft();
    void volumes_data();
    void volumes();
    void resultsAndErrorsGoTheirOwnWays();
    void noBarInAPipe();
    void noBarIfQuiet();
    void aBarOnATerminal();
    void theBarIsNarrowerThanTheTerminal_data();
    void theBarIsNarrowerThanTheTerminal();
    void theBarIsErasedBeforeAnotherLine_data();
    void theBarIsErasedBeforeAnotherLine();
    void answers_data();
    void answers();
    void anInterruptionIsNoAnswer();
    void lostResultsAreNoticed_data();
    void lostResultsAreNoticed();
};

void TestConsole::whatIsPrintable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto of = [](uint character) {
        return QString::fromUcs4(&character, 1);
    };
    QTest::newRow("words") << "zażółć 1.5 m"
                           << "zażółć 1.5 m";
    QTest::newRow("outside the first plane") << of(0x1F42C) << of(0x1F42C);
    QTest::newRow("escape") << "\x1B[2J"
                            << "\\x1b[2J";
    QTest::newRow("nul") << QString(QChar(0)) << "\\x00";
    QTest::newRow("line end") << "a\nb\r"
                              << "a\\nb\\x0d";
    QTest::newRow("delete") << "\x7F"
                            << "\\x7f";
    QTest::newRow("second set of controls") << QString(QChar(0x9B)) << "\\x9b";
    QTest::newRow("right to left") << QString(QChar(0x202E)) << "\\u202e";
    QTest::newRow("isolate") << QString(QChar(0x2066)) << "\\u2066";
    QTest::newRow("line separator") << QString(QChar(0x2028)) << "\\u2028";
    QTest::newRow("paragraph separator") << QString(QChar(0x2029)) << "\\u2029";
    QTest::newRow("lone high surrogate") << QString(QChar(0xD83D)) + 'x' << "\\ud83dx";
    QTest::newRow("lone low surrogate") << QString(QChar(0xDC80)) << "\\udc80";
    QTest::newRow("tag") << of(0xE0041) << "\\U000e0041";
}

void TestConsole::whatIsPrintable()
{
    QFETCH(QString, text);
    QTEST(cli::printable(text), "shown");
    PipedConsole piped;
    piped.console->result(text);
    QFETCH(QString, shown);
    QCOMPARE(piped.out(), shown.toUtf8() + '\n');
}

void TestConsole::jsonReadsBackAndCommandsNoTerminal()
{
    const uint tag = 0xE0041;
    const QJsonObject object = {
        {"text", QStringLiteral("\x1B[2J\n\u009B\u202E\u2028ż") + QString::fromUcs4(&tag, 1)},
        {"number", 5}};
    PipedConsole piped;
    piped.console->setJson(true);
    piped.console->result(object);
    const QByteArray json = piped.out();
    QCOMPARE(QJsonDocument::fromJson(json).object(), object);
    const QString text = QString::fromUtf8(json);
    QCOMPARE(cli::printable(text), QString(text).replace('\n', "\\n"));
}

void TestConsole::jsonComesInEveryCase()
{
    PipedConsole failed;
    failed.console->setJson(true);
    failed.console->error("no device is attached");
    failed.console->finish(cli::ExitStatus::NoDevice);
    QCOMPARE(QJsonDocument::fromJson(failed.out()).object(),
             (QJsonObject{{"status", 3}, {"reasons", QJsonArray{"no device is attached"}}}));

    PipedConsole done;
    done.console->setJson(true);
    done.console->result(QJsonObject{{"port", "ttyACM0"}});
    done.console->finish(cli::ExitStatus::Done);
    QCOMPARE(QJsonDocument::fromJson(done.out()).object(), (QJsonObject{{"port", "ttyACM0"}}));

    PipedConsole plain;
    plain.console->finish(cli::ExitStatus::NoDevice);
    QCOMPARE(plain.out(), QByteArray());
}

void TestConsole::theTimeLeft_data()
{
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<int>("done");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing done") << 1000 << 0 << "";
    QTest::newRow("half") << 65000 << 50 << ", 1:05 left";
    QTest::newRow("a tenth") << 1000 << 10 << ", 0:09 left";
    QTest::newRow("all") << 1000 << 100 << ", 0:00 left";
    QTest::newRow("hours") << 7200000 << 50 << ", 120:00 left";
}

void TestConsole::theTimeLeft()
{
    QFETCH(int, elapsed);
    QFETCH(int, done);
    QTEST(cli::timeLeft(elapsed, done, 100), "text");
}

void TestConsole::volumes_data()
{
    QTest::addColumn<int>("volume");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("quiet") << static_cast<int>(Volume::Quiet) << QByteArray("miolkactl: wrong\n");
    QTest::newRow("normal") << static_cast<int>(Volume::Normal)
                            << QByteArray("said\nmiolkactl: wrong\n");
    QTest::newRow("verbose") << static_cast<int>(Volume::Verbose)
                             << QByteArray("said\nmore\nmiolkactl: wrong\n");
}

void TestConsole::volumes()
{
    QFETCH(int, volume);
    PipedConsole piped;
    piped.console->setVolume(static_cast<Volume>(volume));
    piped.console->say("said");
    piped.console->detail("more");
    piped.console->error("wrong");
    QTEST(piped.err(), "err");
}

void TestConsole::resultsAndErrorsGoTheirOwnWays()
{
    PipedConsole piped;
    piped.console->setJson(true);
    piped.console->result(QJsonObject{{"a", 1}});
    const cMyOutcome outcome = {cli::ExitStatus::BadFile, {"one", "two"}};
    QCOMPARE(piped.console->tell(outcome), cli::ExitStatus::BadFile);
    QCOMPARE(piped.out(), QByteArray("{\n    \"a\": 1\n}\n"));
    QCOMPARE(piped.err(), QByteArray("miolkactl: one\nmiolkactl: two\n"));
}

void TestConsole::noBarInAPipe()
{
    PipedConsole piped;
    piped.console->progress("reading", 1, 2);
    piped.console->progress("reading", 0, 0);
    QCOMPARE(piped.err(), QByteArray());
}

void TestConsole::noBarIfQuiet()
{
    TerminalConsole terminal(80);
    terminal.console->setVolume(Volume::Quiet);
    terminal.console->progress("reading", 1, 2);
    QCOMPARE(terminal.screen(), QByteArray());
}

void TestConsole::aBarOnATerminal()
{
    TerminalConsole terminal(80);
    terminal.console->progress("reading", 0, 2);
    QCOMPARE(terminal.screen(), eraseLine + "reading [..............................]   0 %");
    terminal.console->progress("reading", 1, 2);
    QCOMPARE(terminal.screen(),
             eraseLine + "reading [###############...............]  50 %, 0:00 left");
    terminal.console->progress("reading", 1, 2);
    QCOMPARE(terminal.screen(), QByteArray());
    terminal.console->progress("reading", 0, 0);
    QCOMPARE(terminal.screen(), eraseLine);
}

void TestConsole::theBarIsNarrowerThanTheTerminal_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("width");
    QTest::newRow("wide") << 200 << 57;
    QTest::newRow("just wide enough") << 58 << 57;
    QTest::newRow("one less") << 57 << 56;
    QTest::newRow("narrow") << 20 << 19;
    QTest::newRow("unknown") << 0 << 57;
}

void TestConsole::theBarIsNarrowerThanTheTerminal()
{
    QFETCH(int, columns);
    QFETCH(int, width);
    TerminalConsole terminal(static_cast<unsigned short>(columns));
    terminal.console->progress("reading", 1, 2);
    QCOMPARE(terminal.screen().size(), eraseLine.size() + width);
}

void TestConsole::theBarIsErasedBeforeAnotherLine_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("message") << "say" << QByteArray("hello\r\n");
    QTest::newRow("error") << "error" << QByteArray("miolkactl: hello\r\n");
    QTest::newRow("result") << "result" << QByteArray();
    QTest::newRow("end of the program") << "end" << QByteArray();
}

void TestConsole::theBarIsErasedBeforeAnotherLine()
{
    QFETCH(QString, what);
    QFETCH(QByteArray, after);
    TerminalConsole terminal(80);
    terminal.console->progress("reading", 1, 2);
    QVERIFY(!terminal.screen().isEmpty());
    if (what == "say") {
        terminal.console->say("hello");
    } else if (what == "error") {
        terminal.console->error("hello");
    } else if (what == "result") {
        terminal.console->result("");
    } else {
        terminal.console.reset();
    }
    QCOMPARE(terminal.screen(), eraseLine + after);
}

void TestConsole::answers_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<bool>("isYes");
    QTest::newRow("y") << QByteArray("y\n") << true;
    QTest::newRow("yes in capitals") << QByteArray(" YES \n") << true;
    QTest::newRow("yes without a line end") << QByteArray("yes") << true;
    QTest::newRow("no") << QByteArray("no\n") << false;
    QTest::newRow("empty") << QByteArray("\n") << false;
    QTest::newRow("end of the input") << QByteArray() << false;
    QTest::newRow("word that begins with yes") << QByteArray("yesterday\n") << false;
    QTest::newRow("endless") << QByteArray("y").repeated(10000) << false;
    QTest::newRow("yes far behind spaces") << QByteArray(" ").repeated(10000) + "y\n" << false;
}

void TestConsole::answers()
{
    QFETCH(QByteArray, input);
    PipedConsole piped(input);
    QTEST(piped.console->ask("Really?"), "isYes");
    // What is printed next begins a line.
    QCOMPARE(piped.err(),
             input.endsWith('\n') ? QByteArray("Really? [y/N] ") : QByteArray("Really? [y/N] \n"));
    QCOMPARE(piped.out(), QByteArray());
}

/// The signal goes to a process of its own, which waits for an answer that never comes.
void TestConsole::anInterruptionIsNoAnswer()
{
    std::array<int, 2> in{};
    std::array<int, 2> err{};
    QVERIFY(pipe(in.data()) == 0 && pipe(err.data()) == 0);
    const pid_t child = fork();
    if (child == 0) {
        cli::catchInterruptions();
        const Stream input = streamOf(in[0], "r");
        const Stream errors = streamOf(err[1], "w");
        cMyConsole console(input.get(), stdout, errors.get());
        const bool isYes = console.ask("Really?");
        _exit(isYes ? 1 : cli::isInterrupted() ? 0 : 2);
    }
    char character = 0;
    QCOMPARE(read(err[0], &character, 1), ssize_t{1});
    QTRY_VERIFY(isAsleep(child));
    QCOMPARE(kill(child, SIGINT), 0);
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    for (const int end : {in[0], in[1], err[0], err[1]}) {
        close(end);
    }
}

void TestConsole::lostResultsAreNoticed_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<bool>("isLost");
    QTest::newRow("full disk") << "/dev/full" << true;
    QTest::newRow("nowhere") << "/dev/null" << false;
    QTest::newRow("pipe without a reader") << "" << true;
}

void TestConsole::lostResultsAreNoticed()
{
    QFETCH(QString, place);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    int descriptor = -1;
    if (place.isEmpty()) {
        std::array<int, 2> ends{};
        QCOMPARE(pipe(ends.data()), 0);
        close(ends[0]);
        descriptor = ends[1];
    } else {
        descriptor = open(place.toLatin1().constData(), O_WRONLY);
    }
    const Stream out = streamOf(descriptor, "w");
    cMyConsole console(stdin, out.get(), stderr);
    QVERIFY(!console.hasFailed());
    console.result("lost");
    QTEST(console.hasFailed(), "isLost");
    console.result(QJsonObject{{"lost", true}});
    QTEST(console.hasFailed(), "isLost");
    std::signal(SIGPIPE, handler);
}

QTEST_GUILESS_MAIN(TestConsole)
#include "test_console.moc"
