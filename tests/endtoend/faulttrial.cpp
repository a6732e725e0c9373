// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/faulttrial.h"

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divework.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>

namespace support {

namespace {

constexpr int simulationPage = 3;

std::optional<Operation> exchangeOf(Work work)
{
    switch (work) {
    case Work::Status:
        return Operation::Status;
    case Work::Read:
        return Operation::Read;
    case Work::Write:
        return Operation::Write;
    case Work::Command:
        return Operation::Command;
    case Work::Upload:
        return Operation::Upload;
    case Work::DiveStart:
    case Work::Dive:
        break;
    }
    return std::nullopt;
}

QString inSeconds(qint64 milliseconds)
{
    return QStringLiteral("%1 s").arg(static_cast<double>(milliseconds) / 1000, 0, 'f', 1);
}

} // namespace

const char* nameOf(Work work)
{
    const auto exchange = exchangeOf(work);
    if (exchange) {
        return nameOf(*exchange);
    }
    return work == Work::Dive ? "dive" : "start of a dive";
}

bool isDive(Work work)
{
    return !exchangeOf(work);
}

FaultTrial::FaultTrial(Session& session, Work work)
    : m_session(session), m_work(work), m_exchange(exchangeOf(work)), m_sent(session),
      m_log(session)
{
}

QString FaultTrial::prepare()
{
    constexpr int diveLatency = 2; // or the trace would get long
    QString error;
    if (!m_exchange && (!m_session.latency(diveLatency) || !m_session.page(simulationPage))) {
        error = m_session.error();
    }
    m_session.takeDialogs();
    static_cast<void>(m_session.takeLongestGap()); // begins anew
    if (error.isEmpty() && m_work == Work::Dive) {
        error = startDive(m_session, m_log);
    }
    return error.isEmpty() && m_work == Work::Dive ? steer(m_session, "pbAdd1") : error;
}

int FaultTrial::linesUntilFault() const
{
    // A dive goes on while the fault is told to the device.
    constexpr int inDive = 200;
    constexpr int soon = 3;
    if (m_exchange) {
        return linesOf(*m_exchange) / 2;
    }
    return m_work == Work::Dive ? inDive : soon;
}

QString FaultTrial::begin()
{
    if (m_exchange) {
        return support::begin(m_session, *m_exchange);
    }
    const bool isBegun =
        m_work == Work::Dive || (m_session.click(QStringLiteral("pbStartSim")) &&
                                 m_session.waitFor([this] { return !isIdle(m_session); }));
    return isBegun ? QString() : QStringLiteral("it does not begin: ") + m_session.error();
}

QString FaultTrial::waitForEnd(End end)
{
    switch (end) {
    case End::Completed:
        return waitForCompletion();
    case End::Silence:
        return m_exchange ? waitForSurrender() : waitForDiveSurrender();
    case End::Loss:
        return waitForLoss();
    case End::Stopped:
    case End::Idle:
    case End::Refused:
        return waitForStop(end);
    }
    return {};
}

QString FaultTrial::waitForCompletion()
{
    m_outcome = QStringLiteral("completed");
    if (!m_session.waitForNoDialog()) {
        return QStringLiteral("the progress does not go");
    }
    return m_sent.complete(linesOf(*m_exchange));
}

QString FaultTrial::waitForSurrender()
{
    constexpr int answerPatience = 10000;
    constexpr int cancelPatience = 3000;
    constexpr int margin = 1000;
    const bool byHand = isTransfer(*m_exchange);
    const int answered = linesUntilFault();
    if (!m_sent.reach(answered + 1)) {
        return QStringLiteral("the line that stays unanswered was not sent");
    }
    if (byHand && (!m_session.cancel() || !m_session.waitForNoDialog())) {
        return QStringLiteral("it cannot be cancelled: ") + m_session.error();
    }
    QElapsedTimer clock;
    clock.start();
    const int patience = byHand ? cancelPatience : answerPatience;
    m_session.waitFor([&] { return m_sent.count() > answered + 1; }, 2 * patience);
    const qint64 waited = clock.elapsed();
    if (m_sent.count() != answered + 2 || m_sent.lines().last() != QLatin1String("#ROOT")) {
        return QStringLiteral("it does not leave the device in its root mode");
    }
    m_outcome = (byHand ? QStringLiteral("cancelled, #ROOT after ")
                        : QStringLiteral("given up, #ROOT after ")) +
                inSeconds(waited);
    return waited < patience - margin ? m_outcome : QString();
}

QString FaultTrial::waitForDiveSurrender()
{
    constexpr int least = 2000;
    constexpr int most = 6000; // before the silence a dive goes on for a while
    QElapsedTimer clock;
    clock.start();
    m_session.waitFor([this] { return isIdle(m_session); }, 2 * most);
    const qint64 waited = clock.elapsed();
    m_outcome = QStringLiteral("given up after ") + inSeconds(waited);
    const bool isInTime = waited > least && waited < most;
    return isInTime ? QString() : m_outcome;
}

QString FaultTrial::waitForLoss()
{
    m_outcome = QStringLiteral("one error box");
    QString error = closeErrorBox(m_session);
    if (!error.isEmpty()) {
        return error;
    }
    return m_exchange || isIdle(m_session) ? waitForNoDevice(m_session)
                                           : QStringLiteral("the page is not idle");
}

QString FaultTrial::waitForStop(End end)
{
    constexpr unsigned long aWhile = 700;
    constexpr int atOnce = 2000; // less than what silence is given
    if (end == End::Refused) {
        m_session.waitFor([this] { return isIdle(m_session); }, atOnce);
    } else {
        QThread::msleep(aWhile);
    }
    const bool endedByItself = isIdle(m_session);
    m_outcome = endedByItself ? QStringLiteral("ended by itself") : QStringLiteral("stopped");
    if (endedByItself) {
        return end == End::Stopped ? m_outcome : QString();
    }
    if (end == End::Refused) {
        return QStringLiteral("it goes on");
    }
    return stopDive(m_session, m_log);
}

QString FaultTrial::recover()
{
    QString error = m_session.latency(0) ? QString() : m_session.error();
    // A device that was plugged in anew has brought the start page back already.
    const bool isAway = m_session.isVisible(QStringLiteral("lMiolkaStatus")) != true;
    if (error.isEmpty() && isAway) {
        error = returnToStartPage(m_session);
    }
    if (error.isEmpty()) {
        error = exchangeEverything(m_session);
    }
    if (error.isEmpty()) {
        error = exchangeOnce(m_session, Operation::Command);
    }
    if (error.isEmpty() && m_work == Work::Upload) {
        error = exchangeOnce(m_session, Operation::Upload);
    }
    return error.isEmpty() && !m_exchange ? recoverDive() : error;
}

QString FaultTrial::recoverDive()
{
    const QString error = diveShortly(m_session);
    return error.isEmpty() ? returnToStartPage(m_session) : error;
}

int FaultTrial::longestGap()
{
    m_gap = std::max(m_gap, m_session.takeLongestGap());
    // What kept the window until now shows only when it has looked at its events once more.
    m_session.waitFor([this] {
        const int last = m_session.takeLongestGap();
        m_gap = std::max(m_gap, last);
        return last > 0;
    });
    return m_gap;
}

} // namespace support
