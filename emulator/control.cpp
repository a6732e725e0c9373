// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/control.h"

#include <QFile>
#include <QSocketNotifier>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

cMyControlPipe::cMyControlPipe(QObject* parent) : QObject(parent) {}

cMyControlPipe::~cMyControlPipe()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    if (!m_made.isEmpty()) {
        ::unlink(m_made.constData());
    }
}

bool cMyControlPipe::open(const QString& path)
{
    constexpr mode_t ownerOnly = 0600;
    const QByteArray name = QFile::encodeName(path);
    if (::mkfifo(name.constData(), ownerOnly) == 0) {
        m_made = name;
    } else if (errno != EEXIST) {
        return false;
    }
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0 || !S_ISFIFO(status.st_mode)) {
        return false;
    }
    // Open for writing as well: it then never ends, whoever closes it.
    m_descriptor = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (m_descriptor < 0) {
        return false;
    }
    auto* const reader = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(reader, &QSocketNotifier::activated, this, &cMyControlPipe::receive);
    return true;
}

void cMyControlPipe::receive()
{
    constexpr std::size_t bufferSize = 4096;
    std::array<char, bufferSize> buffer{};
    const ssize_t count = ::read(m_descriptor, buffer.data(), buffer.size());
    if (count <= 0) {
        return;
    }
    m_lines.append(buffer.data(), count);
    for (auto line = m_lines.takeLine(); line; line = m_lines.takeLine()) {
        const QString text = QString::fromUtf8(*line).trimmed();
        if (!text.isEmpty()) {
            emit command(text);
        }
    }
}
