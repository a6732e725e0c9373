// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_PIPETRAP_H
#define MIOLKA_TESTS_SUPPORT_PIPETRAP_H

#include <QByteArray>
#include <QString>

#include <atomic>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace support {

/// A named pipe that nobody may open. Who reads it as if it were a file would wait for ever; that
/// one is let go with nothing read, so that a test fails instead of hanging.
class PipeTrap
{
public:
    explicit PipeTrap(const QString& path) : m_path(path.toUtf8())
    {
        constexpr mode_t forMe = 0600;
        if (mkfifo(m_path.constData(), forMe) != 0) {
            qFatal("no pipe");
        }
        m_guard = std::thread([this] { guard(); });
    }
    ~PipeTrap()
    {
        m_isOver = true;
        m_guard.join();
        unlink(m_path.constData());
    }
    Q_DISABLE_COPY_MOVE(PipeTrap)

    /// Whether somebody has opened it for reading since this was asked the last time.
    [[nodiscard]] bool wasOpened()
    {
        look();
        return m_wasOpened.exchange(false);
    }

private:
    void look()
    {
        // Refused while nobody reads. Asked of the system itself: a library that mocks devices may
        // stand between, and wait there for the one who opens.
        const long end =
            syscall(SYS_openat, AT_FDCWD, m_path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (end >= 0) {
            m_wasOpened = true;
            close(static_cast<int>(end));
        }
    }

    void guard()
    {
        constexpr useconds_t pause = 5000;
        while (!m_isOver) {
            look();
            usleep(pause);
        }
    }

    QByteArray m_path;
    std::atomic<bool> m_isOver{false};
    std::atomic<bool> m_wasOpened{false};
    std::thread m_guard;
};

} // namespace support

#endif
