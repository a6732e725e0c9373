// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SIM_SIMULATION_H
#define MIOLKA_TESTS_SIM_SIMULATION_H

#include "image/hexrecord.h"
#include "sim/simworker.h"
#include "tests/support/peer.h"

#include <QThread>

#include <atomic>
#include <memory>
#include <optional>

namespace support {

/// What a simulation sends, in its order, and how a device answers that.
namespace simulation {

constexpr int linesToBegin = 4;  ///< up to the surface pressure
constexpr int linesInCycle = 17; ///< the pressure is the 13th of them
constexpr int pressureInCycle = 13;

inline QStringList begin()
{
    return {QStringLiteral("#SIMUL"), QStringLiteral("#RAM"), QStringLiteral("#READ"),
            QStringLiteral(":020110000000ED")};
}

/// With the surface pressure of 1013 mbar written again.
inline QStringList cycle(const QString& pressure = QStringLiteral(":02010000F50305"))
{
    return {QStringLiteral(":1001000000000000000000000000000000000000EF"),
            QStringLiteral(":1001100000000000000000000000000000000000DF"),
            QStringLiteral(":1001200000000000000000000000000000000000CF"),
            QStringLiteral(":1001300000000000000000000000000000000000BF"),
            QStringLiteral(":1001400000000000000000000000000000000000AF"),
            QStringLiteral(":10015000000000000000000000000000000000009F"),
            QStringLiteral(":10016000000000000000000000000000000000008F"),
            QStringLiteral(":10017000000000000000000000000000000000007F"),
            QStringLiteral(":00000001FF"),
            QStringLiteral("#SIMUL"),
            QStringLiteral("#RAM"),
            QStringLiteral("#WRITE"),
            pressure,
            QStringLiteral(":00000001FF"),
            QStringLiteral("#SIMUL"),
            QStringLiteral("#RAM"),
            QStringLiteral("#READ")};
}

inline QStringList end()
{
    return {QStringLiteral("#ROOT"), QStringLiteral("#CLEAR")};
}

/// Echoes, but for the surface pressure.
inline Peer::Answer answering(int surfacePressure)
{
    const QVector<unsigned char> bytes = {static_cast<unsigned char>(surfacePressure),
                                          static_cast<unsigned char>(surfacePressure >> 8)};
    const QByteArray record = cMyHexRecord(0x0110, bytes).toString().toLatin1();
    return [record](const QByteArray& line) {
        return (line == ":020110000000ED" ? record : line) + "\r\n";
    };
}

/// The pressure that a line writes, if it does.
inline std::optional<int> pressureOf(const QString& line)
{
    cMyHexRecord record;
    const bool isPressure = line.startsWith(QLatin1String(":02010000")) && record.fromString(line);
    return isPressure ? std::make_optional(record.data().at(0) + 256 * record.data().at(1))
                      : std::nullopt;
}

inline QVector<int> pressures(const QStringList& lines)
{
    QVector<int> all;
    for (const QString& line : lines) {
        if (const auto pressure = pressureOf(line)) {
            all.append(*pressure);
        }
    }
    return all;
}

} // namespace simulation

/// A worker in a thread of its own, a peer for it, and what the worker tells.
class RunningWorker : public QObject
{
    Q_OBJECT

public:
    RunningWorker()
    {
        m_peer.setAnswer([this](const QByteArray& line) {
            if (m_peer.lines().size() == m_stopAt) {
                m_worker.stopWork();
            }
            return m_answer(line);
        });
        m_worker.moveToThread(&m_thread);
        connect(
            &m_thread, &QThread::finished, &m_worker, [this] { m_hasLeft.store(true); },
            Qt::DirectConnection);
        // Queued, as the panel gets it.
        connect(&m_worker, &cMySimWorker::finished, this,
                [this](bool status) { m_ends.append(status); });
        connect(&m_worker, &cMySimWorker::valuesChanged, this,
                [this](const QVector<QString>& values) { m_blocks.append(values); });
        connect(&m_worker, &cMySimWorker::serialPortError, this,
                [this](const QString& error) { m_errors.append(error); });
    }
    ~RunningWorker() override
    {
        m_thread.requestInterruption();
        m_thread.quit();
        m_thread.wait();
        // The thread sanitizer does not see inside Qt, and so not that the thread was waited for.
        static_cast<void>(m_hasLeft.load());
    }
    Q_DISABLE_COPY_MOVE(RunningWorker)

    void start(double speed = 0) { startAt(m_peer.path(), speed); }
    void startAt(const QString& port, double speed = 0)
    {
        QMetaObject::invokeMethod(
            &m_worker, [this, port, speed] { m_worker.doWork(port, speed); }, Qt::QueuedConnection);
        m_thread.start();
    }

    /// The default echoes, and has a surface pressure of 1013 mbar.
    void setAnswer(Peer::Answer answer) { m_answer = std::move(answer); }

    /// Stops at that line, counted from 1, before it is answered.
    void stopAt(int line) { m_stopAt = line; }

    /// Stops in the last line of that cycle.
    void stopInCycle(int cycle)
    {
        stopAt(simulation::linesToBegin + cycle * simulation::linesInCycle);
    }

    /// Until that many lines have come, or the end.
    bool waitForLines(int count)
    {
        return waitFor([this, count] { return m_peer.lines().size() >= count || hasEnded(); }) &&
               !hasEnded();
    }

    bool waitForEnd()
    {
        return waitFor([this] { return hasEnded(); });
    }

    [[nodiscard]] bool hasEnded() const { return !m_ends.isEmpty(); }
    [[nodiscard]] QVector<bool> ends() const { return m_ends; }
    [[nodiscard]] QVector<QVector<QString>> blocks() const { return m_blocks; }
    [[nodiscard]] QStringList errors() const { return m_errors; }
    [[nodiscard]] QStringList lines() const { return m_peer.lines(); }
    support::Peer& peer() { return m_peer; }
    cMySimWorker& worker() { return m_worker; }
    QThread& thread() { return m_thread; }

private:
    Peer m_peer;
    std::atomic<bool> m_hasLeft{false};
    QThread m_thread;
    cMySimWorker m_worker;
    Peer::Answer m_answer = simulation::answering(1013);
    int m_stopAt = -1;
    QVector<bool> m_ends;
    QVector<QVector<QString>> m_blocks;
    QStringList m_errors;
};

} // namespace support

#endif
