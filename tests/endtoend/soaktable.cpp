// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/soaktable.h"

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divelog.h"
#include "tests/endtoend/exchanges.h"
#include "tests/support/contents.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int nameWidth = 17;
constexpr int narrowest = 8;

QStringList entries(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

QString cell(const QString& text, int headingSize)
{
    return text.rightJustified(std::max(narrowest, headingSize + 2));
}

QStringList heldHeadings()
{
    return {QStringLiteral("KiB resident"), QStringLiteral("threads"), QStringLiteral("files"),
            QStringLiteral("sockets"),      QStringLiteral("timers"),  QStringLiteral("objects")};
}

} // namespace

support::SessionOptions soakOptions(const QStringList& emulatorOptions)
{
    support::SessionOptions options;
    options.emulatorOptions =
        QStringList{QStringLiteral("--unplugged"), QStringLiteral("--settings"),
                    QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio")} +
        emulatorOptions;
    options.environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                               QStringLiteral("miolka.link.debug=false"));
    options.environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(MIOLKA_ABSENT_PORTS));
    options.environment.insert(QStringLiteral("MIOLKA_REMOTE_CENSUS"), QStringLiteral("1"));
    return options;
}

QString plugInForStatus(support::Session& session)
{
    support::DiveLog log(session);
    QString error = support::plugIn(session);
    if (!error.isEmpty()) {
        return error;
    }
    const int wanted = support::linesOf(support::Operation::Status);
    const bool isComplete = session.waitFor([&] {
        log.update();
        return log.sent().size() >= wanted && log.isAnswered();
    });
    return isComplete ? support::waitForStatus(session)
                      : QStringLiteral("the status is not asked for");
}

QString unplugAndCloseBox(support::Session& session)
{
    if (!session.unplug()) {
        return session.error();
    }
    const QString error = support::closeErrorBox(session);
    return error.isEmpty() ? support::waitForNoDevice(session) : error;
}

SoakTable::SoakTable(support::Session& session, QStringList counters)
    : m_session(session), m_out(stdout), m_counters(std::move(counters))
{
}

void SoakTable::begin()
{
    m_out << QString(nameWidth, QLatin1Char(' ')) << cell(QStringLiteral("s"), 1);
    for (const QString& heading : m_counters + heldHeadings()) {
        m_out << cell(heading, static_cast<int>(heading.size()));
    }
    m_out << Qt::endl;
    m_clock.start();
}

QString SoakTable::takeSample(const char* name, const QVector<qint64>& counts)
{
    m_last = holdings();
    if (!m_hasStarted) {
        m_hasStarted = true;
        m_start = m_last;
    }
    constexpr int settling = 5000; // a thread may just be about to end
    const bool isAsBefore = m_session.waitFor(
        [this] {
            m_last = holdings();
            return holdsAsMuchAsAtStart();
        },
        settling);
    if (name != nullptr) {
        print(name, counts);
    }
    return isAsBefore ? QString()
                      : QStringLiteral("%1 threads, %2 files, %3 sockets and %4 timers are left")
                            .arg(m_last.threads)
                            .arg(m_last.files)
                            .arg(m_last.sockets)
                            .arg(m_last.timers);
}

bool SoakTable::holdsAsMuchAsAtStart() const
{
    return m_last.threads == m_start.threads && m_last.files == m_start.files &&
           m_last.timers == m_start.timers && m_last.sockets == m_start.sockets;
}

void SoakTable::print(const char* name, const QVector<qint64>& counts)
{
    constexpr int milliseconds = 1000;
    m_out << QString::fromLatin1(name).leftJustified(nameWidth)
          << cell(QString::number(m_clock.elapsed() / milliseconds), 1);
    QVector<qint64> values = counts;
    values << m_last.memory << m_last.threads << m_last.files << m_last.sockets << m_last.timers
           << m_last.objects;
    const QStringList headings = m_counters + heldHeadings();
    for (int i = 0; i < values.size(); ++i) {
        m_out << cell(QString::number(values.at(i)), static_cast<int>(headings.at(i).size()));
    }
    m_out << Qt::endl;
}

Holdings SoakTable::holdings() const
{
    const QString process = QStringLiteral("/proc/%1/").arg(m_session.programId());
    static const QRegularExpression resident(QStringLiteral("VmRSS:\\s+([0-9]+) kB"));
    const QString status =
        QString::fromLatin1(support::contentsOf(process + QStringLiteral("status")));
    Holdings held;
    held.memory = resident.match(status).captured(1).toInt();
    held.threads = static_cast<int>(entries(process + QStringLiteral("task")).size());
    held.timers = m_session.ask(QStringLiteral("timerCount")).value_or(QJsonValue()).toInt();
    held.objects = m_session.ask(QStringLiteral("objectCount")).value_or(QJsonValue()).toInt();
    const QString files = process + QStringLiteral("fd/");
    const QStringList numbers = entries(files);
    for (const QString& number : numbers) {
        const QString target = QFile::symLinkTarget(files + number);
        // The system's table of file types is opened once and kept.
        if (!target.endsWith(QLatin1String("/mime.cache"))) {
            ++(target.contains(QLatin1String("socket:")) ? held.sockets : held.files);
        }
    }
    return held;
}

bool SoakTable::judge(const char* what, int before, int after, int mostGrowth)
{
    const bool holds = after - before <= mostGrowth;
    m_out << (holds ? "holds:  " : "BROKEN: ") << what << " from " << before << " to " << after
          << ", at most " << mostGrowth << " more" << Qt::endl;
    return holds;
}

bool SoakTable::isSteady()
{
    constexpr int mostGrowth = 4 * 1024;
    bool isSteady =
        judge("KiB resident after the warm-up", m_warm.memory, m_last.memory, mostGrowth);
    isSteady &= judge("threads", m_start.threads, m_last.threads, 0);
    isSteady &= judge("open files", m_start.files, m_last.files, 0);
    isSteady &= judge("running timers of the window's thread", m_start.timers, m_last.timers, 0);
    isSteady &= judge("sockets", m_start.sockets, m_last.sockets, 0);
    return isSteady;
}
