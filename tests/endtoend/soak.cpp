// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/soak.h"

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

namespace {

constexpr int simulationPage = 3;
constexpr int pageCount = 4;
constexpr int oneOf = 100; // what chances are counted in

constexpr const char* warm = "after the warm-up";

const QString startButton = QStringLiteral("pbStartSim");
const QString stopButton = QStringLiteral("pbStopSim");

support::SessionOptions withVirtualDevice()
{
    support::SessionOptions options;
    options.emulatorOptions =
        QStringList{QStringLiteral("--unplugged"), QStringLiteral("--settings"),
                    QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio")};
    // Hours of lines would fill the disk.
    options.environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                               QStringLiteral("miolka.link.debug=false"));
    return options;
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList entries(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

Soak::Soak(int seconds, quint32 seed)
    : m_seconds(seconds), m_random(seed), m_session(withVirtualDevice()), m_out(stdout)
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
        const bool isDue = m_clock.elapsed() >= moments.first().first;
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
    return error.isEmpty() && isSteady();
}

QString Soak::prepare()
{
    if (!m_session.isRunning()) {
        return m_session.error();
    }
    QString error = plugIn();
    if (error.isEmpty() && !m_session.page(simulationPage)) {
        error = m_session.error();
    }
    if (error.isEmpty()) {
        m_out << "                     s  simulations    cycles  KiB resident  threads  files  "
                 "sockets"
              << Qt::endl;
        m_clock.start();
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
    return error.isEmpty() && isTornOff ? plugIn() : error;
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
    if (!m_session.unplug()) {
        return m_session.error();
    }
    QString error = support::closeErrorBox(m_session);
    return error.isEmpty() ? support::waitForNoDevice(m_session) : error;
}

QString Soak::plugIn()
{
    support::DiveLog log(m_session);
    QString error = support::plugIn(m_session);
    if (!error.isEmpty()) {
        return error;
    }
    const int wanted = support::linesOf(support::Operation::Status);
    const bool isComplete = m_session.waitFor([&] {
        log.update();
        return log.sent().size() >= wanted && log.isAnswered();
    });
    return isComplete ? support::waitForStatus(m_session)
                      : QStringLiteral("the status is not asked for");
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
    m_last = holdings();
    if (m_start.threads == 0) {
        m_start = m_last;
    }
    constexpr int settling = 2000; // a thread may just be about to end
    const bool isAsBefore = m_session.waitFor(
        [this] {
            m_last = holdings();
            return holdsAsMuchAsAtStart();
        },
        settling);
    if (name != nullptr) {
        print(name);
    }
    if (qstrcmp(name, warm) == 0) {
        m_warm = m_last;
    }
    return isAsBefore ? QString()
                      : QStringLiteral("%1 threads, %2 files and %3 sockets are left")
                            .arg(m_last.threads)
                            .arg(m_last.files)
                            .arg(m_last.sockets);
}

bool Soak::holdsAsMuchAsAtStart() const
{
    // The mocked ports keep a socket for each port that was to be opened when it was just gone,
    // which the program does once after each unplugging.
    return m_last.threads == m_start.threads && m_last.files == m_start.files &&
           m_last.sockets <= m_start.sockets + m_unpluggings;
}

void Soak::print(const char* name)
{
    constexpr int milliseconds = 1000;
    m_out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
                 .arg(QString::fromLatin1(name), -17)
                 .arg(m_clock.elapsed() / milliseconds, 4)
                 .arg(m_simulations, 12)
                 .arg(m_cycles, 9)
                 .arg(m_last.memory, 13)
                 .arg(m_last.threads, 8)
                 .arg(m_last.files, 6)
                 .arg(m_last.sockets, 8)
          << Qt::endl;
}

Holdings Soak::holdings() const
{
    const QString process = QStringLiteral("/proc/%1/").arg(m_session.programId());
    static const QRegularExpression resident(QStringLiteral("VmRSS:\\s+([0-9]+) kB"));
    const QString status = QString::fromLatin1(readAll(process + QStringLiteral("status")));
    Holdings held;
    held.memory = resident.match(status).captured(1).toInt();
    held.threads = entries(process + QStringLiteral("task")).size();
    const QString files = process + QStringLiteral("fd/");
    const QStringList numbers = entries(files);
    for (const QString& number : numbers) {
        const bool isSocket =
            QFile::symLinkTarget(files + number).contains(QLatin1String("socket:"));
        ++(isSocket ? held.sockets : held.files);
    }
    return held;
}

bool Soak::isSteady()
{
    constexpr int mostGrowth = 4 * 1024;
    const int growth = m_last.memory - m_warm.memory;
    m_out << m_simulations << " simulations, " << m_cycles << " cycles, " << m_unpluggings
          << " unpluggings; memory grew by " << growth << " KiB after the warm-up" << Qt::endl;
    return growth <= mostGrowth;
}

/// Ends with 1 if a simulation did not come off, or the program holds more than at its start.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    bool isTime = false;
    bool isSeed = true;
    const int seconds = arguments.value(1).toInt(&isTime);
    const quint32 seed = arguments.size() > 2 ? arguments.at(2).toUInt(&isSeed) : 1;
    if (!isTime || seconds <= 0 || !isSeed || arguments.size() > 3) {
        QTextStream(stdout) << "usage: miolka-soak SECONDS [SEED]\n";
        return 2;
    }
    return Soak(seconds, seed).run() ? 0 : 1;
}
