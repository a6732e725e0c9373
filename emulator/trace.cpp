// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/trace.h"

#include <QFileInfo>

cMyTrace::cMyTrace()
{
    m_clock.start();
}

bool cMyTrace::open(const QString& path)
{
    const QFileInfo info(path);
    m_file.setFileName(path);
    return (!info.exists() || info.isFile()) &&
           m_file.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

namespace {

const char* mark(cMyTrace::Direction direction)
{
    switch (direction) {
    case cMyTrace::Direction::ToDevice:
        return " > ";
    case cMyTrace::Direction::FromDevice:
        return " < ";
    case cMyTrace::Direction::Spoken:
        return " * ";
    }
    return "";
}

} // namespace

void cMyTrace::write(Direction direction, int device, const QByteArray& bytes)
{
    if (!m_file.isOpen()) {
        return;
    }
    constexpr double milliseconds = 1000;
    constexpr int decimals = 3;
    const double now = static_cast<double>(m_clock.elapsed()) / milliseconds;
    QByteArray line = QByteArray::number(now, 'f', decimals);
    line += mark(direction);
    if (m_numbered) {
        line += QByteArray::number(device) + ' ';
    }
    line += escaped(bytes) + '\n';
    const bool isWritten = m_file.write(line) == line.size() && m_file.flush();
    m_failed = m_failed || !isWritten;
}

QByteArray cMyTrace::escaped(const QByteArray& bytes)
{
    constexpr char firstPrintable = ' ';
    constexpr char lastPrintable = '~';
    QByteArray text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        if (byte == '\r') {
            text += "\\r";
        } else if (byte == '\n') {
            text += "\\n";
        } else if (byte == '\\') {
            text += "\\\\";
        } else if (byte >= firstPrintable && byte <= lastPrintable) {
            text += byte;
        } else {
            text += "\\x" + QByteArray(1, byte).toHex();
        }
    }
    return text;
}
