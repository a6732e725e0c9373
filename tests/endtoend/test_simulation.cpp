// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divework.h"
#include "tests/endtoend/exchanges.h"

#include <QtTest>

#include <cmath>

using support::DiveLog;
using support::MessageRule;
using support::SentLines;

/// Simulated dives as a person makes them: with one device, with a second one, with none any more,
/// and by rules that were entered in the window.
class TestSimulation : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void thePageShowsWhatTheDeviceTells();
    void theWindowIsLockedMeanwhile();
    void everyVisitOfTheStartPageAsksOnce();
    void anUnpluggedDeviceIsToldOnce();
    void anotherDeviceDoesNotDisturbTheDive();
    void theRulesWrittenAreTheRulesHeard();
    void anExchangeMayJustHaveEnded_data();
    void anExchangeMayJustHaveEnded();
    void aStatusQueryGivesWay();

private:
    /// With the first device plugged in and as slow as a real one.
    void start(const QStringList& emulatorOptions = {});
    void enterRules(const QVector<MessageRule>& rules);
    /// Down to that depth in m, a rest at the bottom, and up until the dive's end was told.
    void diveTo(double depth, DiveLog& log);

    std::unique_ptr<support::Session> m_session;
};

namespace {

enum Page { StartPage, ParametersPage, MessagesPage, SimulationPage };

constexpr std::size_t absolutePressure = 0;
constexpr std::size_t surfacePressure = 8;
constexpr std::size_t depthNow = 32;

/// In cm, in fresh water of 20 degrees.
double depthOf(int pressureDifference)
{
    constexpr double pascals = 100; // in a mbar
    constexpr double density = 998.2;
    constexpr double gravity = 9.806;
    return 100 * pressureDifference * pascals / (density * gravity);
}

} // namespace

void TestSimulation::cleanup()
{
    m_session.reset();
}

void TestSimulation::start(const QStringList& emulatorOptions)
{
    constexpr int latency = 2;
    m_session = support::startSession(emulatorOptions);
    QVERIFY(m_session != nullptr);
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QVERIFY(m_session->latency(latency));
    m_session->takeDialogs();
}

void TestSimulation::thePageShowsWhatTheDeviceTells()
{
    start();
    DiveLog log(*m_session);
    QCOMPARE(support::startDive(*m_session, log), QString());
    QCOMPARE(support::steer(*m_session, "pbAdd1"), QString());
    QCOMPARE(support::steer(*m_session, "pbAdd01", 5), QString());
    QCOMPARE(support::steer(*m_session, "pbAdd001", 2), QString());
    QCOMPARE(support::waitForDepth(*m_session, 2, true), QString());
    QCOMPARE(support::disagreement(support::compareValues(*m_session, log)), QString());

    QCOMPARE(support::steer(*m_session, "pbSet0"), QString());
    // The device measures once in a second.
    QVERIFY(m_session->waitFor([this] {
        return m_session->text(QStringLiteral("simSpeed")) == QLatin1String("0.00 m/s");
    }));
    QCOMPARE(support::disagreement(support::compareValues(*m_session, log)), QString());
    const support::RamValues resting = log.cycles().last();
    const double expected = depthOf(resting.at(absolutePressure) - resting.at(surfacePressure));
    QVERIFY2(std::abs(resting.at(depthNow) - expected) <= 1,
             qPrintable(QString::number(resting.at(depthNow))));

    QCOMPARE(support::steer(*m_session, "pbSub1", 2), QString());
    QCOMPARE(support::steer(*m_session, "pbSub01"), QString());
    QCOMPARE(support::steer(*m_session, "pbSub001"), QString());
    QCOMPARE(support::waitForDepth(*m_session, 0, false), QString());
    const auto surfaced = support::compareValues(*m_session, log);
    QCOMPARE(support::disagreement(surfaced), QString());
    QCOMPARE(log.cycles().last().at(absolutePressure), log.cycles().last().at(surfacePressure));
    QCOMPARE(support::stopDive(*m_session, log), QString());
    QVERIFY(m_session->takeDialogs().isEmpty());
}

void TestSimulation::theWindowIsLockedMeanwhile()
{
    const QString open = QStringLiteral("Ctrl+O");
    start();
    DiveLog log(*m_session);
    QCOMPARE(support::startDive(*m_session, log), QString());
    QCOMPARE(support::checkLock(*m_session, true), QString());
    QVERIFY(m_session->press(open, QStringLiteral("pbStopSim")));
    QVERIFY(!m_session->trigger(QStringLiteral("actionLibraryUpdate")));
    for (const int page : {StartPage, ParametersPage, MessagesPage, SimulationPage}) {
        QVERIFY(m_session->page(page));
    }
    const auto cycles = log.cycles().size();
    constexpr int some = 5;
    QVERIFY(m_session->waitFor([&] {
        log.update();
        return log.cycles().size() > cycles + some;
    }));
    QVERIFY(!log.sent().contains(QStringLiteral("#HEX"))); // as a status query would send
    QVERIFY(m_session->takeDialogs().isEmpty());

    QCOMPARE(support::stopDive(*m_session, log), QString());
    QCOMPARE(support::checkLock(*m_session, false), QString());
    QVERIFY(m_session->press(open, QStringLiteral("pbStartSim")));
    QVERIFY(m_session->waitFor([this] { return !m_session->dialog().isEmpty(); }));
}

void TestSimulation::everyVisitOfTheStartPageAsksOnce()
{
    start();
    constexpr int simulations = 3;
    for (int i = 0; i < simulations; ++i) {
        QCOMPARE(support::diveShortly(*m_session), QString());
    }
    QCOMPARE(support::returnToStartPage(*m_session), QString());
    QCOMPARE(support::diveShortly(*m_session), QString());
    QCOMPARE(support::returnToStartPage(*m_session), QString());
    QVERIFY(m_session->page(MessagesPage));
    QCOMPARE(support::returnToStartPage(*m_session), QString());
    QCOMPARE(support::waitForStatus(*m_session), QString());
}

void TestSimulation::anUnpluggedDeviceIsToldOnce()
{
    start();
    DiveLog log(*m_session);
    QCOMPARE(support::startDive(*m_session, log), QString());
    QCOMPARE(support::steer(*m_session, "pbAdd1"), QString());
    QCOMPARE(support::unplug(*m_session), QString());
    QVERIFY(support::isIdle(*m_session));
    QVERIFY(m_session->page(ParametersPage));
    QCOMPARE(m_session->isEnabled(QStringLiteral("par1Cb")), std::make_optional(true));
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QCOMPARE(support::diveShortly(*m_session), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

void TestSimulation::anotherDeviceDoesNotDisturbTheDive()
{
    const QString selector = QStringLiteral("portSelect");
    const QStringList one{QStringLiteral("ttyACM0")};
    start({QStringLiteral("--count"), QStringLiteral("2")});
    DiveLog log(*m_session);
    QCOMPARE(support::startDive(*m_session, log), QString());
    QVERIFY(m_session->plug(1));
    constexpr unsigned long rest = 700; // the program would have seen it twice
    QThread::msleep(rest);
    log.update();
    const auto cycles = log.cycles().size();
    QCOMPARE(m_session->items(selector), one);
    QVERIFY(m_session->waitFor([&] {
        log.update();
        return log.cycles().size() > cycles + 2;
    }));
    QVERIFY(!support::isIdle(*m_session));
    QCOMPARE(support::stopDive(*m_session, log), QString());
    const QStringList both = one + QStringList(QStringLiteral("ttyACM1"));
    m_session->waitFor([&] { return m_session->items(selector) == both; });
    QCOMPARE(m_session->items(selector), both);
    QCOMPARE(m_session->text(selector), one.first());
    QVERIFY(support::linesToDevice(m_session->trace(), 1).isEmpty());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

void TestSimulation::enterRules(const QVector<MessageRule>& rules)
{
    constexpr int ascentSpeed = -10;
    constexpr int bottomSpeed = 10;
    constexpr double distance = 2;
    QCOMPARE(support::startAfresh(*m_session), QString());
    QVERIFY(m_session->page(ParametersPage));
    QCOMPARE(
        support::enterDiveParameters(*m_session, "10 [Hz]", ascentSpeed, bottomSpeed, distance),
        QString());
    QVERIFY(m_session->page(MessagesPage));
    for (const MessageRule& rule : rules) {
        QCOMPARE(support::enterRule(*m_session, rule), QString());
    }
    QCOMPARE(support::transfer(*m_session, QStringLiteral("actionWriteSettings")), QString());
}

void TestSimulation::diveTo(double depth, DiveLog& log)
{
    QCOMPARE(support::startDive(*m_session, log), QString());
    QCOMPARE(support::steer(*m_session, "pbAdd1"), QString());
    QCOMPARE(support::waitForDepth(*m_session, depth, true), QString());
    QCOMPARE(support::steer(*m_session, "pbSet0"), QString());
    QVERIFY(m_session->waitFor([this] {
        return support::numberIn(m_session->text(QStringLiteral("simBottomTime"))) >= 1;
    }));
    QCOMPARE(support::steer(*m_session, "pbSub1", 2), QString());
    QVERIFY(m_session->waitFor([this] {
        return support::numberIn(m_session->text(QStringLiteral("simDepth"))) <= 0 &&
               support::numberIn(m_session->text(QStringLiteral("simSurfaceTime"))) >= 1;
    }));
}

void TestSimulation::theRulesWrittenAreTheRulesHeard()
{
    start();
    const char* const regardless = "Regardless of any value";
    enterRules({
        {1, "underwater", regardless, nullptr, {}, "Depth", "(value)", "every distance E"},
        {2, "during descent", "Depth", ">=", 1.5, "Focus", nullptr, "only once"},
        {3, "during descent", "Depth", ">=", 30, "Attention", nullptr, "only once"},
        {4, "on the bottom", regardless, nullptr, {}, "Bottom", nullptr, "only once"},
        {5, "during ascent", "Vertical speed", "<=", -1, "Swim slower", nullptr, "only once"},
        {6, "during ascent", "Vertical speed", ">=", 1, "Swim faster", nullptr, "still"},
        {7, "at the end of dive", "Dive time", "<=", 1, "Relax yourself", nullptr, "only once"},
        {8, "at the end of dive", "Dive time", ">=", 3, "Dive time", nullptr, "only once"},
        {9, "at the switch off", regardless, nullptr, {}, "Show OK", nullptr, "only once"},
    });
    DiveLog log(*m_session);
    constexpr double depth = 3; // far from any multiple of the distance
    diveTo(depth, log);
    const QString diveTime = m_session->text(QStringLiteral("simDiveTime"));
    QCOMPARE(support::stopDive(*m_session, log), QString());

    const auto heard = [&log](int rule) {
        return log.words(rule).join(QLatin1Char(','));
    };
    QCOMPARE(heard(1), QStringLiteral("2,2"));
    QCOMPARE(heard(2), QStringLiteral("Focus"));
    QCOMPARE(heard(3), QString());
    QCOMPARE(heard(4), QStringLiteral("Bottom"));
    QCOMPARE(heard(5), QStringLiteral("Swim slower"));
    QCOMPARE(heard(6), QString());
    QCOMPARE(heard(7), QString());
    QCOMPARE(heard(8) + QStringLiteral(" s"), diveTime);
    QCOMPARE(heard(9), QStringLiteral("Show OK"));
    for (const support::SpokenMessage& message : log.spoken()) {
        QVERIFY(message.rule != 2 || message.depth >= 1.5);
    }
}

void TestSimulation::anExchangeMayJustHaveEnded_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("read") << QStringLiteral("actionReadSettings");
    QTest::newRow("write") << QStringLiteral("actionWriteSettings");
}

void TestSimulation::anExchangeMayJustHaveEnded()
{
    QFETCH(QString, action);
    start();
    QVERIFY(m_session->page(SimulationPage));
    QCOMPARE(support::transfer(*m_session, action), QString());
    QCOMPARE(support::diveShortly(*m_session), QString());
    QCOMPARE(support::returnToStartPage(*m_session), QString());
    QCOMPARE(support::waitForStatus(*m_session), QString());
    QCOMPARE(support::exchangeEverything(*m_session), QString());
    QCOMPARE(support::diveShortly(*m_session), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

void TestSimulation::aStatusQueryGivesWay()
{
    constexpr int middle = 30;
    start();
    const SentLines sent(*m_session);
    QVERIFY(m_session->click(QStringLiteral("pbGetStatus")));
    QVERIFY(sent.reach(middle));
    QCOMPARE(support::diveShortly(*m_session), QString());
    const QStringList lines = sent.lines();
    const auto leave = lines.indexOf(QStringLiteral("#SIMUL")) - 1;
    QVERIFY(leave >= middle && leave < support::linesOf(support::Operation::Status));
    QCOMPARE(lines.at(leave), QStringLiteral("#ROOT"));
    QCOMPARE(support::returnToStartPage(*m_session), QString());
    QCOMPARE(support::waitForStatus(*m_session), QString());
}

QTEST_GUILESS_MAIN(TestSimulation)
#include "test_simulation.moc"
