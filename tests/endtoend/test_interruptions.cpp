// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"

#include <QtTest>

using support::Operation;
using support::SentLines;

/// An exchange is left by the user in its middle, or with the whole program.
class TestInterruptions : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void closingEndsTheExchange_data();
    void closingEndsTheExchange();
    void closingEndsTheErrorBox();
    void cancellingEndsTheTransfer_data();
    void cancellingEndsTheTransfer();

private:
    /// Begins it and waits until it is in its middle; slowly enough to be met there.
    void beginAndReachTheMiddle(Operation operation, const SentLines& sent);

    std::unique_ptr<support::Session> m_session;
};

void TestInterruptions::init()
{
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    const QString error = support::plugInAndSettle(*m_session);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestInterruptions::cleanup()
{
    m_session.reset();
}

void TestInterruptions::beginAndReachTheMiddle(Operation operation, const SentLines& sent)
{
    constexpr int slow = 20;
    QVERIFY(m_session->latency(slow));
    QCOMPARE(support::begin(*m_session, operation), QString());
    QVERIFY(sent.reach(support::linesOf(operation) / 2));
}

void TestInterruptions::closingEndsTheExchange_data()
{
    QTest::addColumn<Operation>("operation");
    for (const Operation operation : {Operation::Status, Operation::Read, Operation::Write}) {
        QTest::newRow(support::nameOf(operation)) << operation;
    }
}

void TestInterruptions::closingEndsTheExchange()
{
    QFETCH(Operation, operation);
    const SentLines sent(*m_session);
    beginAndReachTheMiddle(operation, sent);
    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
    QVERIFY(sent.count() < support::linesOf(operation));
    QCOMPARE(sent.lines().last(), QStringLiteral("#ROOT"));
}

void TestInterruptions::closingEndsTheErrorBox()
{
    QVERIFY(m_session->unplug());
    QVERIFY(m_session->waitForDialog(QStringLiteral("Error")));
    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
}

void TestInterruptions::cancellingEndsTheTransfer_data()
{
    QTest::addColumn<Operation>("operation");
    for (const Operation operation : {Operation::Read, Operation::Write}) {
        QTest::newRow(support::nameOf(operation)) << operation;
    }
}

void TestInterruptions::cancellingEndsTheTransfer()
{
    QFETCH(Operation, operation);
    const QByteArray before = support::saved(*m_session);
    m_session->takeDialogs();
    const SentLines sent(*m_session);
    beginAndReachTheMiddle(operation, sent);
    QVERIFY(m_session->cancel());
    QVERIFY(m_session->waitForNoDialog());
    QVERIFY(m_session->waitFor([&] { return sent.lines().last() == QLatin1String("#ROOT"); }));
    const auto count = sent.count();
    QVERIFY(count < support::linesOf(operation));
    QVERIFY(m_session->latency(0));
    // To write marks the settings, in their first record, with the program's version.
    const auto unmarked = operation == Operation::Write ? before.indexOf('\n') : 0;
    QCOMPARE(support::saved(*m_session).mid(unmarked), before.mid(unmarked));
    QCOMPARE(sent.count(), count);
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
    QCOMPARE(support::exchangeEverything(*m_session), QString());
}

QTEST_GUILESS_MAIN(TestInterruptions)
#include "test_interruptions.moc"
