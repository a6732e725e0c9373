// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/faulttrial.h"

#include <QtTest>

using support::End;
using support::FaultTrial;
using support::SentLines;
using support::Work;

namespace {

struct Fault
{
    const char* name;
    const char* spec; ///< "%1" is the line in question, counted from the device's plugging
    End inExchange;
    End atDiveStart;
    End inDive;
};

constexpr Fault faults[] = {
    {"split", "split", End::Completed, End::Stopped, End::Stopped},
    {"join", "join", End::Completed, End::Stopped, End::Stopped},
    {"nul", "nul", End::Completed, End::Stopped, End::Stopped},
    {"notice", "notice=1", End::Completed, End::Stopped, End::Stopped},
    {"garbage", "garbage=0.5", End::Completed, End::Idle, End::Stopped},
    {"bad-checksum", "bad-checksum=1", End::Completed, End::Stopped, End::Stopped},
    // Nothing that a dive could begin with ever comes.
    {"long", "long=1", End::Completed, End::Refused, End::Stopped},
    {"silent-after", "silent-after=%1", End::Silence, End::Silence, End::Silence},
    {"vanish-at", "vanish-at=%1", End::Loss, End::Loss, End::Loss},
};

End endOf(const Fault& fault, Work work)
{
    if (!support::isDive(work)) {
        return fault.inExchange;
    }
    return work == Work::Dive ? fault.inDive : fault.atDiveStart;
}

} // namespace

/// Every fault of the wire in everything that is done with a device: it ends as it has to, the
/// window answers all the time, and with the fault gone everything works again. Prints a table.
class TestFaultMatrix : public QObject
{
    Q_OBJECT

private slots:
    void endsAndRecovers_data();
    void endsAndRecovers();
    void cleanup();
    void cleanupTestCase();

private:
    /// A program of its own for each fault, so that traces stay short; one for all works.
    void useSessionFor(const QString& fault);
    QString plugIn();
    QString meet(FaultTrial& trial, QString spec, End end);

    std::unique_ptr<support::Session> m_session;
    std::unique_ptr<SentLines> m_sentSincePlugged;
    QString m_fault;
};

void TestFaultMatrix::endsAndRecovers_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("spec");
    QTest::addColumn<End>("end");
    QTest::addColumn<Work>("work");
    for (const Fault& fault : faults) {
        for (const Work work : support::everyWork) {
            QTest::addRow("%s, %s", fault.name, support::nameOf(work))
                << QString::fromLatin1(fault.name) << QString::fromLatin1(fault.spec)
                << endOf(fault, work) << work;
        }
    }
}

void TestFaultMatrix::useSessionFor(const QString& fault)
{
    if (m_fault == fault && m_session != nullptr) {
        return;
    }
    m_fault = fault;
    m_session.reset();
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    QCOMPARE(plugIn(), QString());
}

QString TestFaultMatrix::plugIn()
{
    m_sentSincePlugged = std::make_unique<SentLines>(*m_session);
    return support::plugInAndSettle(*m_session);
}

void TestFaultMatrix::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_session.reset(); // or the rows that follow would fail for what this one left behind
    }
}

void TestFaultMatrix::cleanupTestCase()
{
    m_session.reset();
}

QString TestFaultMatrix::meet(FaultTrial& trial, QString spec, End end)
{
    QString error = trial.prepare();
    if (spec.contains(QStringLiteral("%1"))) {
        const int itself = end == End::Loss ? 1 : 0;
        spec = spec.arg(m_sentSincePlugged->count() + trial.linesUntilFault() + itself);
    }
    if (error.isEmpty() && !m_session->fault(spec)) {
        error = m_session->error();
    }
    if (error.isEmpty()) {
        error = trial.begin();
    }
    return error.isEmpty() ? trial.waitForEnd(end) : error;
}

void TestFaultMatrix::endsAndRecovers()
{
    QFETCH(QString, fault);
    QFETCH(QString, spec);
    QFETCH(End, end);
    QFETCH(Work, work);
    useSessionFor(fault);
    if (QTest::currentTestFailed()) {
        return;
    }
    FaultTrial trial(*m_session, work);
    QCOMPARE(meet(trial, spec, end), QString());
    QVERIFY(m_session->fault(QStringLiteral("none")));
    int boxes = support::errorBoxes(m_session->takeDialogs());
    if (end == End::Loss) {
        QCOMPARE(plugIn(), QString());
        boxes += support::errorBoxes(m_session->takeDialogs());
    }
    const int gap = trial.longestGap();
    qInfo("%-12s | %-15s | %-31s | %d ms", qPrintable(fault), support::nameOf(work),
          qPrintable(trial.outcome()), gap);
    QCOMPARE(boxes, end == End::Loss ? 1 : 0);
    QVERIFY(gap > 0);
    // A window that waited for the device would stand still until the device is given up. How soon
    // it reacts is for the benchmarks to tell: here other tests run beside it.
    constexpr int leastPatience = 3000;
    QVERIFY2(gap < leastPatience, qPrintable(QStringLiteral("%1 ms").arg(gap)));
    QCOMPARE(trial.recover(), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

QTEST_GUILESS_MAIN(TestFaultMatrix)
#include "test_faultmatrix.moc"
