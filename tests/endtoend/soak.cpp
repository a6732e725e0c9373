// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/soak.h"

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"
#include "tests/endtoend/soakwork.h"

#include <QCoreApplication>
#include <QThread>

namespace {

constexpr int simulationPage = 3;
constexpr int pageCount = 4;
constexpr int oneOf = 100; // what chances are counted in

constexpr const char* warm = "after the warm-up";

const QString startButton = QStringLiteral("pbStartSim");
const QString stopButton = QStringLiteral("pbStopSim");

} // namespace

Soak::Soak(int seconds, quint32 seed)
    : m_seconds(seconds), m_random(seed), m_session(soakOptions()), m_out(stdout),
      m_table(m_session, {QStringLiteral("simulations"), QStringLiteral("cycles"),
                          QStringLiteral("pluggings")})
{
    m_out << "seed " << seed << Qt::endl;
}

bool Soak::run()
{
    constexpr int milliseconds = 1000;
    constexpr int warmingPart = 5; // a fifth of the time
    constexpr int between = 10;    // simulations between two looks at what is held
    const qint64 whole = static_cast<qint64>(m_seconds) * milliseconds;
    QVector<QPair<qint64, const char*>> moments = {
        {whole / warmingPart, warm}, {whole / 2, "at the middle"}, {whole, "at the end"}};
    QString error = prepare();
    while (error.isEmpty() && !moments.isEmpty()) {
        error = simulate();
        const bool isDue = m_table.elapsed() >= moments.first().first;
        if (error.isEmpty() && (isDue || m_simulations % between == 0)) {
            error = takeSample(isDue ? moments.takeFirst().second : nullptr);
        }
    }
    if (error.isEmpty() && !m_session.close()) {
        error = m_session.error();
    }
    if (error.isEmpty() && m_session.exitStatus() != std::make_optional(0)) {
        error = QStringLiteral("it does not end with 0");
    }
    if (!error.isEmpty()) {
        m_out << "FAILED in simulation " << m_simulations << ": " << error << Qt::endl;
    }
    return error.isEmpty() && m_table.isSteady();
}

QString Soak::prepare()
{
    if (!m_session.isRunning()) {
        return m_session.error();
    }
    QString error = plugInForStatus(m_session);
    if (error.isEmpty() && !m_session.page(simulationPage)) {
        error = m_session.error();
    }
    if (error.isEmpty()) {
        m_table.begin();
        error = takeSample("at the start");
    }
    return error;
}

QString Soak::simulate()
{
    constexpr int unplugChance = 3;
    constexpr int leastLatency = 1; // or the trace would get long
    constexpr int latencies = 3;
    constexpr int mostDisturbances = 15;
    if (!m_session.latency(leastLatency + any(latencies))) {
        return m_session.error();
    }
    ++m_simulations;
    support::DiveLog log(m_session);
    QString error = begin(log);
    for (int left = any(mostDisturbances); error.isEmpty() && left > 0; --left) {
        error = disturb();
    }
    if (!error.isEmpty()) {
        return error;
    }
    const bool isTornOff = any(oneOf) < unplugChance;
    error = isTornOff ? unplug() : end(log);
    log.update();
    m_cycles += log.cycles().size();
    return error.isEmpty() && isTornOff ? plugInForStatus(m_session) : error;
}

QString Soak::begin(support::DiveLog& log)
{
    constexpr int shortChance = 20;
    if (m_isHasty) {
        const bool isStarted = m_session.waitFor([this] { return m_session.click(startButton); });
        return isStarted ? QString() : m_session.error();
    }
    if (any(oneOf) < shortChance) { // stopped before it has told anything
        return m_session.page(simulationPage) && m_session.click(startButton) ? QString()
                                                                              : m_session.error();
    }
    return support::startDive(m_session, log);
}

QString Soak::disturb()
{
    static constexpr const char* buttons[] = {"pbSub1",   "pbSub01", "pbSub001", "pbSet0",
                                              "pbAdd001", "pbAdd01", "pbAdd1"};
    static constexpr const char* keys[] = {"Up", "Down", "PgUp", "PgDown", "Home", "End"};
    enum Kind { Press, Slide, Leave, Wait, KindCount };
    constexpr int longestRest = 200;
    bool isDone = true;
    switch (any(KindCount)) {
    case Press:
        isDone = m_session.click(
            QString::fromLatin1(buttons[any(static_cast<int>(std::size(buttons)))]));
        break;
    case Slide:
        isDone = m_session.press(QString::fromLatin1(keys[any(static_cast<int>(std::size(keys)))]),
                                 QStringLiteral("simSlider"));
        break;
    case Leave:
        isDone = m_session.page(any(pageCount));
        rest(any(longestRest));
        isDone = isDone && m_session.page(simulationPage);
        break;
    default:
        rest(any(longestRest));
    }
    return isDone ? QString() : m_session.error();
}

QString Soak::end(support::DiveLog& log)
{
    constexpr int hasteChance = 30;
    constexpr int statusChance = 30;
    m_isHasty = any(oneOf) < hasteChance;
    if (m_isHasty) {
        return m_session.click(stopButton) ? QString() : m_session.error();
    }
    QString error = support::stopDive(m_session, log);
    if (error.isEmpty() && any(oneOf) < statusChance) {
        error = support::returnToStartPage(m_session);
    }
    return error;
}

QString Soak::unplug()
{
    m_isHasty = false;
    ++m_unpluggings;
    return unplugAndCloseBox(m_session);
}

void Soak::rest(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(milliseconds));
}

QString Soak::takeSample(const char* name)
{
    // Between simulations, with the port where a status query leaves it.
    const bool isIdle = m_session.waitFor([this] { return support::isIdle(m_session); });
    m_isHasty = false;
    QString error = isIdle && m_session.page(simulationPage)
                        ? support::returnToStartPage(m_session)
                        : QStringLiteral("the page is not idle");
    if (!error.isEmpty()) {
        return error;
    }
    error = m_table.takeSample(name, {m_simulations, m_cycles, m_unpluggings});
    if (qstrcmp(name, warm) == 0) {
        m_table.warmedUp();
    }
    return error;
}

/// Ends with 1 if something did not come off, or the program holds more than at its start.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool isWork = arguments.removeAll(QStringLiteral("--rounds")) > 0;
    bool isSize = false;
    bool isSeed = true;
    const int size = arguments.value(0).toInt(&isSize);
    const quint32 seed = arguments.size() > 1 ? arguments.at(1).toUInt(&isSeed) : 1;
    if (!isSize || size <= 0 || !isSeed || arguments.size() > 2) {
        QTextStream(stdout) << "usage: miolka-soak SECONDS [SEED]\n"
                               "       miolka-soak --rounds ROUNDS [SEED]\n";
        return 2;
    }
    const bool isPassed = isWork ? SoakWork(size, seed).run() : Soak(size, seed).run();
    return isPassed ? 0 : 1;
}
