// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divework.h"
#include "tests/endtoend/exchanges.h"

#include <QElapsedTimer>
#include <QtTest>

using support::DiveLog;
using support::SentLines;

namespace {

/// How a simulation has to end.
enum class End {
    Stopped, ///< not before it is stopped, and with the device taken leave of
    Idle,    ///< when it is stopped at the latest
    Refused, ///< at once by itself
    Silence, ///< given up by itself
    Loss,    ///< told by one error box
};

struct Fault
{
    const char* name;
    const char* spec; ///< "%1" is the line in question, counted from the device's plugging
    End atStart;      ///< if it is there from the start on
    End inDive;       ///< if it comes later
};

constexpr Fault faults[] = {
    {"split", "split", End::Stopped, End::Stopped},
    {"join", "join", End::Stopped, End::Stopped},
    {"nul", "nul", End::Stopped, End::Stopped},
    {"notice", "notice=1", End::Stopped, End::Stopped},
    {"garbage", "garbage=0.5", End::Idle, End::Stopped},
    {"bad-checksum", "bad-checksum=1", End::Stopped, End::Stopped},
    // Nothing that a dive could begin with ever comes.
    {"long", "long=1", End::Refused, End::Stopped},
    {"silent-after", "silent-after=%1", End::Silence, End::Silence},
    {"vanish-at", "vanish-at=%1", End::Loss, End::Loss},
};

} // namespace

Q_DECLARE_METATYPE(End)

/// Every fault of the wire in a simulation: it ends as it has to, and with the fault gone
/// everything works again. Prints a table.
class TestSimulationFaults : public QObject
{
    Q_OBJECT

private slots:
    void endsAndRecovers_data();
    void endsAndRecovers();
    void cleanupTestCase();

private:
    void useSessionFor(const QString& fault);
    /// Nothing if it came, else what is wrong.
    QString waitForEnd(End end, DiveLog& log);
    QString waitForStop(End end, DiveLog& log);
    QString waitForSurrender();
    QString waitForLoss();
    QString recover(End end);

    std::unique_ptr<support::Session> m_session;
    std::unique_ptr<SentLines> m_sentSincePlugged;
    QString m_fault;
    QString m_outcome;
};

void TestSimulationFaults::endsAndRecovers_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("spec");
    QTest::addColumn<bool>("isDiving");
    QTest::addColumn<End>("end");
    for (const Fault& fault : faults) {
        for (const bool isDiving : {false, true}) {
            QTest::addRow("%s, %s", fault.name, isDiving ? "in the dive" : "from the start on")
                << QString::fromLatin1(fault.name) << QString::fromLatin1(fault.spec) << isDiving
                << (isDiving ? fault.inDive : fault.atStart);
        }
    }
}

void TestSimulationFaults::cleanupTestCase()
{
    m_session.reset();
}

void TestSimulationFaults::useSessionFor(const QString& fault)
{
    if (m_fault == fault && m_session != nullptr) {
        return;
    }
    constexpr int latency = 2;
    m_fault = fault;
    m_session.reset();
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    m_sentSincePlugged = std::make_unique<SentLines>(*m_session);
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QVERIFY(m_session->latency(latency));
}

QString TestSimulationFaults::waitForEnd(End end, DiveLog& log)
{
    switch (end) {
    case End::Stopped:
    case End::Idle:
    case End::Refused:
        return waitForStop(end, log);
    case End::Silence:
        return waitForSurrender();
    case End::Loss:
        return waitForLoss();
    }
    return {};
}

QString TestSimulationFaults::waitForStop(End end, DiveLog& log)
{
    constexpr unsigned long aWhile = 700;
    QThread::msleep(aWhile);
    const bool endedByItself = support::isIdle(*m_session);
    m_outcome = endedByItself ? QStringLiteral("ended by itself") : QStringLiteral("stopped");
    if (endedByItself) {
        return end == End::Stopped ? m_outcome : QString();
    }
    if (end == End::Refused) {
        return QStringLiteral("it goes on");
    }
    if (!m_session->click(QStringLiteral("pbStopSim")) ||
        !m_session->waitFor([this] { return support::isIdle(*m_session); })) {
        return QStringLiteral("it cannot be stopped: ") + m_session->error();
    }
    log.update();
    return log.hasTakenLeave() ? QString() : QStringLiteral("the device is left in the dive");
}

QString TestSimulationFaults::waitForSurrender()
{
    constexpr int patience = 3000;
    constexpr int margin = 1000;
    QElapsedTimer clock;
    clock.start();
    m_session->waitFor([this] { return support::isIdle(*m_session); }, 3 * patience);
    const qint64 waited = clock.elapsed();
    m_outcome =
        QStringLiteral("given up after %1 s").arg(static_cast<double>(waited) / 1000, 0, 'f', 1);
    const bool isInTime = waited > patience - margin && waited < patience + margin;
    return isInTime ? QString() : m_outcome;
}

QString TestSimulationFaults::waitForLoss()
{
    m_outcome = QStringLiteral("one error box");
    QString error = support::closeErrorBox(*m_session);
    if (!error.isEmpty()) {
        return error;
    }
    return support::isIdle(*m_session) ? support::waitForNoDevice(*m_session)
                                       : QStringLiteral("the page is not idle");
}

QString TestSimulationFaults::recover(End end)
{
    QString error;
    if (end == End::Loss) {
        m_sentSincePlugged = std::make_unique<SentLines>(*m_session);
        error = support::plugInAndSettle(*m_session);
    } else {
        error = support::returnToStartPage(*m_session);
    }
    if (error.isEmpty()) {
        error = support::waitForStatus(*m_session);
    }
    if (error.isEmpty()) {
        error = support::exchangeEverything(*m_session);
    }
    return error.isEmpty() ? support::diveShortly(*m_session) : error;
}

void TestSimulationFaults::endsAndRecovers()
{
    constexpr int simulationPage = 3;
    QFETCH(QString, fault);
    QFETCH(QString, spec);
    QFETCH(bool, isDiving);
    QFETCH(End, end);
    useSessionFor(fault);
    if (QTest::currentTestFailed()) {
        return;
    }
    QVERIFY(m_session->page(simulationPage));
    m_session->takeDialogs();
    DiveLog log(*m_session);
    if (isDiving) {
        QCOMPARE(support::startDive(*m_session, log), QString());
        QCOMPARE(support::steer(*m_session, "pbAdd1"), QString());
    }
    if (spec.contains(QStringLiteral("%1"))) {
        // A dive goes on while this is told to the device; the other begins with the next lines.
        constexpr int later = 200;
        constexpr int soon = 3;
        spec = spec.arg(m_sentSincePlugged->count() + (isDiving ? later : soon));
    }
    QVERIFY(m_session->fault(spec));
    if (!isDiving) {
        QVERIFY(m_session->click(QStringLiteral("pbStartSim")));
        QVERIFY(m_session->waitFor([this] { return !support::isIdle(*m_session); }));
    }
    QCOMPARE(waitForEnd(end, log), QString());
    QVERIFY(m_session->fault(QStringLiteral("none")));
    const QJsonArray dialogs = m_session->takeDialogs();
    QCOMPARE(recover(end), QString());
    qInfo("%-12s | %-17s | %s", qPrintable(fault), isDiving ? "in the dive" : "from the start on",
          qPrintable(m_outcome));
    QCOMPARE(support::errorBoxes(dialogs), end == End::Loss ? 1 : 0);
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

QTEST_GUILESS_MAIN(TestSimulationFaults)
#include "test_simulationfaults.moc"
