// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/peer.h"

#include <QFile>
#include <QSocketNotifier>

#include <array>
#include <unistd.h>

namespace support {

Peer::Peer()
{
    if (!m_terminal.open() || !QFile::link(m_terminal.path(), path())) {
        qFatal("no pseudo-terminal");
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_terminal.descriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &Peer::receive);
    setAnswer([](const QByteArray& line) { return line + "\r\n"; });
}

Peer::~Peer()
{
    hangUp();
}

termios Peer::settings() const
{
    termios settings{};
    tcgetattr(m_terminal.descriptor(), &settings);
    return settings;
}

void Peer::fallSilentAt(int count)
{
    const auto last = m_lines.size() + count;
    setAnswer([this, last](const QByteArray& line) {
        return m_lines.size() >= last ? QByteArray() : line + "\r\n";
    });
}

void Peer::send(const QByteArray& bytes)
{
    int sent = 0;
    while (sent < bytes.size()) {
        const auto count = write(m_terminal.descriptor(), std::next(bytes.constData(), sent),
                                 static_cast<std::size_t>(bytes.size() - sent));
        if (count <= 0) {
            return;
        }
        sent += static_cast<int>(count);
    }
}

void Peer::hangUp()
{
    m_notifier.reset();
    QFile::remove(path());
    m_terminal.close();
}

void Peer::receive()
{
    std::array<char, 4096> bytes{};
    const auto count = read(m_terminal.descriptor(), bytes.data(), bytes.size());
    if (count <= 0) {
        return;
    }
    m_incoming.append(bytes.data(), count);
    while (const auto line = m_incoming.takeLine()) {
        const QByteArray text = line->trimmed();
        m_lines.append(QString::fromLatin1(text));
        if (m_terminal.isOpen()) {
            send(m_answer(text));
        }
        emit lineTaken(static_cast<int>(m_lines.size()));
    }
}

} // namespace support
