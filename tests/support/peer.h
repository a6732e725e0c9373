// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_PEER_H
#define MIOLKA_TESTS_SUPPORT_PEER_H

#include "device/lineassembler.h"
#include "emulator/pseudoterminal.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

#include <functional>
#include <memory>
#include <termios.h>

class QSocketNotifier;

namespace support {

/// The other end of a serial line, driven by the event loop of the test: every byte that the
/// program gets is the test's choice.
class Peer : public QObject
{
    Q_OBJECT

public:
    /// What is sent for a line; nothing keeps silent. The default is the line itself.
    using Answer = std::function<QByteArray(const QByteArray& line)>;

    Peer();
    ~Peer() override;
    Q_DISABLE_COPY_MOVE(Peer)

    /// What the program opens. It is a link that goes with the line: the system gives the
    /// terminal behind it a new owner as soon as it is closed.
    [[nodiscard]] QString path() const { return m_directory.filePath(QStringLiteral("port")); }

    [[nodiscard]] QString terminal() const { return m_terminal.path(); }

    /// The lines that came, without their line ends.
    [[nodiscard]] const QStringList& lines() const { return m_lines; }

    /// How the program has set up the line.
    [[nodiscard]] termios settings() const;

    void forgetLines() { m_lines.clear(); }
    void setAnswer(Answer answer) { m_answer = std::move(answer); }

    /// Keeps silent from the line on that is the count-th to come from now, counted from 1.
    void fallSilentAt(int count);

    void send(const QByteArray& bytes);

    /// Unplugs the line; the path is dead from then on.
    void hangUp();

signals:
    /// A line came and was answered.
    void lineTaken(int count);

private:
    void receive();

    cMyPseudoTerminal m_terminal;
    QTemporaryDir m_directory;
    std::unique_ptr<QSocketNotifier> m_notifier;
    cMyLineAssembler m_incoming;
    QStringList m_lines;
    Answer m_answer;
};

/// Waits up to ten seconds until the condition holds. Other than QTest's own waiting it looks all
/// the time, so that a program and a peer that share a thread do not sleep at each line.
inline bool waitFor(const std::function<bool()>& condition)
{
    constexpr int patience = 10000;
    constexpr int pause = 100;
    const QDeadlineTimer end(patience);
    while (!condition() && !end.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::usleep(pause);
    }
    return condition();
}

} // namespace support

#endif
