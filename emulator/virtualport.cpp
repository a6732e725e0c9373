// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/virtualport.h"

#include "emulator/trace.h"
#include "emulator/virtualdevice.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>

#include <unistd.h>

cMyVirtualPort::cMyVirtualPort(cMyVirtualDevice* device, quint32 seed, QObject* parent)
    : QObject(parent), m_device(device), m_injector(seed), m_timer(new QTimer(this))
{
    m_clock.start();
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &cMyVirtualPort::sendDue);
}

void cMyVirtualPort::setTrace(cMyTrace* trace, int number)
{
    m_trace = trace;
    m_number = number;
}

bool cMyVirtualPort::plug()
{
    if (isPlugged()) {
        return true;
    }
    if (!m_terminal.open()) {
        return false;
    }
    m_injector.plugged();
    m_reader = new QSocketNotifier(m_terminal.descriptor(), QSocketNotifier::Read, this);
    connect(m_reader, &QSocketNotifier::activated, this, &cMyVirtualPort::receive);
    m_writer = new QSocketNotifier(m_terminal.descriptor(), QSocketNotifier::Write, this);
    m_writer->setEnabled(false);
    connect(m_writer, &QSocketNotifier::activated, this, &cMyVirtualPort::flush);
    return true;
}

void cMyVirtualPort::unplug()
{
    if (!isPlugged()) {
        return;
    }
    m_timer->stop();
    m_queue.clear();
    m_queuedBytes = 0;
    m_lastDue = 0;
    m_pending.clear();
    m_lines.clear();
    if (m_trace != nullptr && !m_traceLine.isEmpty()) {
        m_trace->write(cMyTrace::Direction::FromDevice, m_number, m_traceLine);
    }
    m_traceLine.clear();
    m_reader = released(m_reader);
    m_writer = released(m_writer);
    m_terminal.close();
}

QSocketNotifier* cMyVirtualPort::released(QSocketNotifier* notifier)
{
    // It may be the one whose signal we are in; and it must not watch a number that is closed.
    notifier->setEnabled(false);
    notifier->deleteLater();
    return nullptr;
}

void cMyVirtualPort::receive()
{
    constexpr std::size_t packetSize = 65536;
    std::array<char, packetSize> packet; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const ssize_t count = ::read(m_terminal.descriptor(), packet.data(), packet.size());
    if (count <= 0) {
        const bool isPassing = count < 0 && (errno == EAGAIN || errno == EINTR);
        m_reader->setEnabled(isPassing);
        return;
    }
    if (m_device == nullptr) {
        if (m_trace != nullptr) {
            m_trace->write(cMyTrace::Direction::ToDevice, m_number,
                           QByteArray(packet.data(), static_cast<int>(count)));
        }
        return;
    }
    m_lines.append(packet.data(), count);
    for (auto line = m_lines.takeLine(); line; line = m_lines.takeLine()) {
        serve(*line);
    }
}

void cMyVirtualPort::serve(const QByteArray& line)
{
    if (m_trace != nullptr) {
        m_trace->write(cMyTrace::Direction::ToDevice, m_number, line);
    }
    const auto fate = m_injector.nextLine();
    if (fate == cMyFaultInjector::Fate::Vanish) {
        emit vanished();
        unplug();
        return;
    }
    if (fate == cMyFaultInjector::Fate::Answer && m_device != nullptr) {
        send(m_injector.packets(m_device->answer(line)));
    }
    emit lineServed(m_injector.lines());
}

void cMyVirtualPort::send(const QVector<cMyPacket>& packets)
{
    if (!isPlugged()) { // by a receiver of what the device did
        return;
    }
    const qint64 now = m_clock.elapsed();
    m_lastDue = std::max(now, m_lastDue) + m_latency;
    for (const cMyPacket& packet : packets) {
        m_lastDue += packet.delay;
        if (m_queue.empty() && m_lastDue <= now) {
            put(packet.bytes);
        } else if (m_queuedBytes + packet.bytes.size() <= mostPending) {
            m_queue.push_back({packet.bytes, m_lastDue});
            m_queuedBytes += packet.bytes.size();
        }
    }
    startTimer();
}

void cMyVirtualPort::startTimer()
{
    if (m_queue.empty() || m_timer->isActive()) {
        return;
    }
    const qint64 wait = std::max<qint64>(0, m_queue.front().due - m_clock.elapsed());
    m_timer->start(static_cast<int>(wait));
}

void cMyVirtualPort::sendDue()
{
    const qint64 now = m_clock.elapsed();
    while (!m_queue.empty() && m_queue.front().due <= now) {
        const QByteArray bytes = m_queue.front().bytes;
        m_queue.pop_front();
        m_queuedBytes -= bytes.size();
        put(bytes);
    }
    startTimer();
}

void cMyVirtualPort::put(const QByteArray& bytes)
{
    if (m_pending.size() + bytes.size() > mostPending) {
        return;
    }
    if (m_trace != nullptr) {
        traceSent(bytes);
    }
    m_pending += bytes;
    flush();
}

void cMyVirtualPort::flush()
{
    int sent = 0;
    while (sent < m_pending.size()) {
        const auto left = static_cast<std::size_t>(m_pending.size() - sent);
        const ssize_t count =
            ::write(m_terminal.descriptor(), std::next(m_pending.constData(), sent), left);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        sent += static_cast<int>(count);
    }
    m_pending.remove(0, sent);
    m_writer->setEnabled(!m_pending.isEmpty());
}

void cMyVirtualPort::traceSent(const QByteArray& bytes)
{
    m_traceLine += bytes;
    for (auto feed = m_traceLine.indexOf('\n'); feed >= 0; feed = m_traceLine.indexOf('\n')) {
        m_trace->write(cMyTrace::Direction::FromDevice, m_number, m_traceLine.left(feed + 1));
        m_traceLine.remove(0, feed + 1);
    }
}
