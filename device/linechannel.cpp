// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/linechannel.h"

#include "device/protocol.h"

#include <QSerialPort>

#include <algorithm>
#include <array>

namespace {

/// How often the haste is looked at, in ms.
constexpr int slice = 20;

/// For all answers once the caller must leave, in ms.
constexpr int leavePatience = 350;

} // namespace

cMyLineChannel::cMyLineChannel(std::function<Haste()> haste)
    : m_haste(std::move(haste)), m_end(QDeadlineTimer::Forever)
{
}

void cMyLineChannel::setListener(std::function<void(const QByteArray& line)> listener)
{
    m_listener = std::move(listener);
}

void cMyLineChannel::settle(QSerialPort& port)
{
    m_incoming.clear();
    const QDeadlineTimer end(device::longestSettling);
    QDeadlineTimer quiet(device::quietMoment);
    while (port.isOpen() && !quiet.hasExpired() && !end.hasExpired() && m_haste() != Haste::Leave) {
        if (port.waitForReadyRead(slice)) {
            port.readAll();
            quiet.setRemainingTime(device::quietMoment);
        } else if (port.error() != QSerialPort::TimeoutError) {
            return;
        }
    }
}

bool cMyLineChannel::exchange(QSerialPort& port, const QString& line, QString& reply)
{
    port.write(line.toLatin1());
    // An answer that is there already leaves no wait in which it would be sent.
    port.flush();
    m_end.setRemainingTime(m_patience);
    m_stopEnd.reset();
    do {
        if (const auto answer = takeAnswer()) {
            reply = *answer;
            return true;
        }
    } while (receive(port));
    return false;
}

std::optional<QString> cMyLineChannel::takeAnswer()
{
    // A notice and the answer may have come in one packet: nothing more arrives then.
    while (const auto line = m_incoming.takeLine()) {
        if (m_listener) {
            m_listener(*line);
        }
        if (!line->startsWith(device::noticeMark)) {
            return QString::fromUtf8(*line);
        }
    }
    return std::nullopt;
}

bool cMyLineChannel::receive(QSerialPort& port)
{
    for (;;) {
        const Haste haste = m_haste();
        if (haste == Haste::Leave) {
            limitWait(m_leaveEnd, leavePatience);
        } else if (haste == Haste::Stop) {
            limitWait(m_stopEnd, stopPatience);
        }
        if (!port.isOpen() || m_end.hasExpired()) {
            return false;
        }
        if (port.bytesAvailable() > 0 || port.waitForReadyRead(slice)) {
            std::array<char, cMyLineAssembler::longestLine> bytes{};
            const qint64 count = port.read(bytes.data(), bytes.size());
            if (count < 0) {
                return false;
            }
            m_incoming.append(bytes.data(), count);
            if (haste != Haste::Leave) {
                m_end.setRemainingTime(m_patience);
            }
            return true;
        }
        if (port.error() != QSerialPort::TimeoutError) {
            return false;
        }
    }
}

void cMyLineChannel::limitWait(std::optional<QDeadlineTimer>& limit, int milliseconds)
{
    if (!limit) {
        limit.emplace(milliseconds);
    }
    m_end = std::min(m_end, *limit);
}
