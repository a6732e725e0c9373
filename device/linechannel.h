// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_LINECHANNEL_H
#define MIOLKA_DEVICE_LINECHANNEL_H

#include "device/lineassembler.h"

#include <QDeadlineTimer>
#include <QString>

#include <functional>
#include <optional>

class QSerialPort;

/// Lines to the device and their answers for a thread that may wait: a line is sent, and the call
/// returns with its answer. The event-driven counterpart for the window's thread is cMyMiolka.
///
/// For one thread and one open port at a time.
class cMyLineChannel
{
public:
    /// How long an answer may take from the moment on when anything last arrived, in ms.
    static constexpr int answerPatience = 3000;

    /// How long it may take altogether once the caller wants to stop, whatever arrives, in ms.
    static constexpr int stopPatience = 2 * answerPatience;

    /// How much of a hurry the caller is in.
    enum class Haste {
        None,
        Stop, ///< no answer is waited for without end, whatever else arrives
        Leave ///< all further waits together take no more than a moment
    };

    /// The haste is asked for in short intervals while anything is waited for.
    explicit cMyLineChannel(std::function<Haste()> haste);

    /// Is called with each line that comes for an exchange, notices too, before it is looked at.
    void setListener(std::function<void(const QByteArray& line)> listener);

    /// How long an answer may take from now on instead of answerPatience, in ms.
    void setPatience(int milliseconds) { m_patience = milliseconds; }

    /// To be called once the port was opened: drops what comes until the line is quiet, so that a
    /// late answer to an exchange that was cut off is not taken for one of this.
    void settle(QSerialPort& port);

    /// Sends a line, its line end included, and waits for the line that answers it; notices are
    /// skipped. The reply keeps its line end. False if no answer came in time or the device is
    /// gone: what comes after that belongs to no line, and the port is to be closed.
    bool exchange(QSerialPort& port, const QString& line, QString& reply);

private:
    [[nodiscard]] std::optional<QString> takeAnswer();
    bool receive(QSerialPort& port);
    void limitWait(std::optional<QDeadlineTimer>& limit, int milliseconds);

    std::function<Haste()> m_haste;
    std::function<void(const QByteArray& line)> m_listener;
    int m_patience = answerPatience;
    cMyLineAssembler m_incoming;
    QDeadlineTimer m_end;                     ///< of the present wait
    std::optional<QDeadlineTimer> m_stopEnd;  ///< of this answer, once the caller wants to stop
    std::optional<QDeadlineTimer> m_leaveEnd; ///< of all answers, once the caller must leave
};

#endif
