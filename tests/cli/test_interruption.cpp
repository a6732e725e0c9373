// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/interruption.h"

#include <QtTest>

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// How a process ends that runs this.
int statusOf(const std::function<int()>& life)
{
    const pid_t child = fork();
    if (child == 0) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            std::signal(number, SIG_DFL);
        }
        _exit(life());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

/// Each case in a process of its own: signals change a process for good.
class TestInterruption : public QObject
{
    Q_OBJECT

private slots:
    void theFirstIsNoted_data() { addSignals(); }
    void theFirstIsNoted();
    void theSecondEndsAtOnce_data();
    void theSecondEndsAtOnce();
    void whatWasIgnoredStaysSo_data() { addSignals(); }
    void whatWasIgnoredStaysSo();

private:
    static void addSignals()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("Ctrl-C") << SIGINT;
        QTest::newRow("kill") << SIGTERM;
        QTest::newRow("terminal closed") << SIGHUP;
    }
};

void TestInterruption::theFirstIsNoted()
{
    QFETCH(int, number);
    const int status = statusOf([number] {
        cli::catchInterruptions();
        const bool wasInterrupted = cli::isInterrupted();
        std::raise(number);
        return !wasInterrupted && cli::isInterrupted() ? 0 : 1;
    });
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
}

void TestInterruption::theSecondEndsAtOnce_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::newRow("Ctrl-C twice") << SIGINT << SIGINT;
    QTest::newRow("Ctrl-C, then kill") << SIGINT << SIGTERM;
    QTest::newRow("kill, then terminal closed") << SIGTERM << SIGHUP;
}

void TestInterruption::theSecondEndsAtOnce()
{
    QFETCH(int, first);
    QFETCH(int, second);
    const int status = statusOf([first, second] {
        cli::catchInterruptions();
        std::raise(first);
        std::raise(second);
        return 0;
    });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), second);
}

void TestInterruption::whatWasIgnoredStaysSo()
{
    QFETCH(int, number);
    const int status = statusOf([number] {
        std::signal(number, SIG_IGN);
        cli::catchInterruptions();
        std::raise(number);
        std::raise(number);
        return cli::isInterrupted() ? 1 : 0;
    });
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
}

QTEST_GUILESS_MAIN(TestInterruption)
#include "test_interruption.moc"
