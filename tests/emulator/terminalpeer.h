// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_TERMINALPEER_H
#define MIOLKA_TESTS_EMULATOR_TERMINALPEER_H

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <QString>

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace support {

/// A program's end of a pseudo-terminal, without any event loop: it blocks, so the device must live
/// in another thread or process, unless nothing is waited for.
class TerminalPeer
{
public:
    explicit TerminalPeer(const QString& path)
        : m_descriptor(open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
    }
    ~TerminalPeer() { close(); }
    Q_DISABLE_COPY_MOVE(TerminalPeer)

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    void close()
    {
        if (isOpen()) {
            ::close(m_descriptor);
        }
        m_descriptor = -1;
    }

    /// Waits until all of it is taken; false if it is not in time.
    [[nodiscard]] bool send(const QByteArray& bytes) const
    {
        constexpr int patience = 20000; // ms
        int sent = 0;
        while (sent < bytes.size()) {
            pollfd waiting = {m_descriptor, POLLOUT, 0};
            if (poll(&waiting, 1, patience) <= 0) {
                return false;
            }
            const auto left = static_cast<size_t>(bytes.size() - sent);
            const ssize_t count = write(m_descriptor, std::next(bytes.constData(), sent), left);
            if (count < 0 && errno != EAGAIN) {
                return false;
            }
            sent += static_cast<int>(std::max<ssize_t>(count, 0));
        }
        return true;
    }

    /// The next packet, as large as it comes; empty when none came in that time, or on a hang-up.
    QByteArray packet(int milliseconds = 10000)
    {
        pollfd waiting = {m_descriptor, POLLIN, 0};
        if (poll(&waiting, 1, milliseconds) <= 0) {
            return {};
        }
        std::array<char, 65536> buffer{};
        const ssize_t count = read(m_descriptor, buffer.data(), buffer.size());
        return {buffer.data(), static_cast<int>(count > 0 ? count : 0)};
    }

    /// Bytes up to that many line feeds; fewer if they do not come in time.
    QByteArray lines(int count)
    {
        const QDeadlineTimer deadline(20000);
        QByteArray bytes;
        while (bytes.count('\n') < count && !deadline.hasExpired() && !isHungUp()) {
            bytes += packet(100);
        }
        return bytes;
    }

    /// Whether the device's end is closed.
    [[nodiscard]] bool isHungUp() const
    {
        pollfd state = {m_descriptor, 0, 0};
        return poll(&state, 1, 0) > 0 && (state.revents & POLLHUP) != 0;
    }

private:
    int m_descriptor;
};

} // namespace support

#endif
