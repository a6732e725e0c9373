// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"

#include <QtTest>

using support::Operation;
using support::SentLines;

/// The only device is unplugged in the middle of something. The user is told once, the settings in
/// the window are as they were, and with the device back everything works.
class TestUnplugging : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void cleanupTestCase();
    void isToldOnceAndForgotten_data();
    void isToldOnceAndForgotten();

private:
    /// One program for all, since it is to forget what was; another only after a failure.
    std::unique_ptr<support::Session> m_session;
};

void TestUnplugging::init()
{
    if (m_session != nullptr) {
        return;
    }
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    const QString error = support::plugInAndSettle(*m_session);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestUnplugging::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_session.reset();
    }
}

void TestUnplugging::cleanupTestCase()
{
    m_session.reset();
}

void TestUnplugging::isToldOnceAndForgotten_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<int>("line");
    const auto row = [](Operation operation, int line) {
        QTest::addRow("%s, line %d", support::nameOf(operation), line) << operation << line;
    };
    for (const int line : {1, 40, 80}) {
        row(Operation::Status, line);
    }
    for (const Operation operation : {Operation::Read, Operation::Write}) {
        for (const int line : {1, 5, 30, 60}) {
            row(operation, line);
        }
    }
    row(Operation::Command, 1);
}

void TestUnplugging::isToldOnceAndForgotten()
{
    QFETCH(Operation, operation);
    QFETCH(int, line);
    // Other settings than the device's, so that a read that came through would show.
    QVERIFY(m_session->page(0));
    QCOMPARE(support::startAfresh(*m_session), QString());
    const QByteArray before = support::saved(*m_session);
    QVERIFY(!before.isEmpty());
    // A single line must still be unanswered when the device goes.
    const int latency = operation == Operation::Command ? 500 : 15;
    QVERIFY(m_session->latency(latency));
    m_session->takeDialogs();
    const SentLines sent(*m_session);
    QCOMPARE(support::begin(*m_session, operation), QString());
    QVERIFY(sent.reach(line));
    QVERIFY(m_session->unplug());

    QCOMPARE(support::closeErrorBox(*m_session), QString());
    QCOMPARE(support::waitForNoDevice(*m_session), QString());
    QVERIFY(m_session->latency(0));
    const auto sentUntilGone = sent.count();
    QVERIFY2(sentUntilGone < support::linesOf(operation) || operation == Operation::Command,
             "it was over before the device went");
    // To write marks the settings, in their first record, with the program's version.
    const auto unmarked = operation == Operation::Write ? before.indexOf('\n') : 0;
    QCOMPARE(support::saved(*m_session).mid(unmarked), before.mid(unmarked));
    QCOMPARE(sent.count(), sentUntilGone);

    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 1);
    QCOMPARE(support::exchangeEverything(*m_session), QString());
}

QTEST_GUILESS_MAIN(TestUnplugging)
#include "test_unplugging.moc"
