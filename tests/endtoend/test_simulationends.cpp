// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divework.h"
#include "tests/endtoend/exchanges.h"

#include <QElapsedTimer>
#include <QtTest>

using support::DiveLog;

/// The window is closed while a simulation runs, or is about to.
class TestSimulationEnds : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void closingEndsTheDive();
    void closingRightAfterTheStart_data();
    void closingRightAfterTheStart();
    void closingDoesNotWaitForASilentDevice_data();
    void closingDoesNotWaitForASilentDevice();

private:
    /// Sooner than an answer is given up.
    void closeSoon();

    std::unique_ptr<support::Session> m_session;
};

namespace {

constexpr int simulationPage = 3;

const QString startButton = QStringLiteral("pbStartSim");
const QString silence = QStringLiteral("silent-after=0");

} // namespace

void TestSimulationEnds::init()
{
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QVERIFY(m_session->page(simulationPage));
    m_session->takeDialogs();
}

void TestSimulationEnds::cleanup()
{
    m_session.reset();
}

void TestSimulationEnds::closeSoon()
{
    constexpr int soon = 2500;
    QElapsedTimer clock;
    clock.start();
    QVERIFY2(m_session->close(), qPrintable(m_session->error()));
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
    QVERIFY2(clock.elapsed() < soon, qPrintable(QStringLiteral("%1 ms").arg(clock.elapsed())));
}

void TestSimulationEnds::closingEndsTheDive()
{
    constexpr int latency = 2;
    QVERIFY(m_session->latency(latency));
    DiveLog log(*m_session);
    QCOMPARE(support::startDive(*m_session, log), QString());
    QCOMPARE(support::steer(*m_session, "pbAdd1", 3), QString());
    QCOMPARE(support::waitForDepth(*m_session, 2, true), QString());
    closeSoon();
    log.update();
    QVERIFY2(log.hasTakenLeave(), qPrintable(log.sent().last()));
    QCOMPARE(log.sent().count(QStringLiteral("#CLEAR")), 1);
}

void TestSimulationEnds::closingRightAfterTheStart_data()
{
    QTest::addColumn<int>("delay");
    // The last of them are in the middle of what is sent first.
    for (const int delay : {0, 1, 2, 3, 4, 5, 60, 110}) {
        QTest::addRow("%d ms", delay) << delay;
    }
}

void TestSimulationEnds::closingRightAfterTheStart()
{
    QFETCH(int, delay);
    DiveLog log(*m_session);
    QVERIFY(m_session->click(startButton));
    QThread::msleep(static_cast<unsigned long>(delay));
    closeSoon();
    log.update();
    QVERIFY2(log.sent().isEmpty() || log.hasTakenLeave(),
             qPrintable(QStringLiteral("%1 lines, the last of them %2")
                            .arg(log.sent().size())
                            .arg(log.sent().value(log.sent().size() - 1))));
}

void TestSimulationEnds::closingDoesNotWaitForASilentDevice_data()
{
    QTest::addColumn<bool>("isDiving");
    QTest::addColumn<int>("delay");
    QTest::newRow("silent from the start on, at once") << false << 0;
    QTest::newRow("silent from the start on, 5 ms later") << false << 5;
    QTest::newRow("silent from the start on, 300 ms later") << false << 300;
    QTest::newRow("fallen silent, at once") << true << 0;
    QTest::newRow("fallen silent, 300 ms later") << true << 300;
}

void TestSimulationEnds::closingDoesNotWaitForASilentDevice()
{
    QFETCH(bool, isDiving);
    QFETCH(int, delay);
    DiveLog log(*m_session);
    if (isDiving) {
        QCOMPARE(support::startDive(*m_session, log), QString());
        QVERIFY(m_session->fault(silence));
    } else {
        QVERIFY(m_session->fault(silence));
        QVERIFY(m_session->click(startButton));
    }
    QThread::msleep(static_cast<unsigned long>(delay));
    closeSoon();
}

QTEST_GUILESS_MAIN(TestSimulationEnds)
#include "test_simulationends.moc"
