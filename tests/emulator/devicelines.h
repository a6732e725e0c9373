// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_DEVICELINES_H
#define MIOLKA_TESTS_EMULATOR_DEVICELINES_H

#include "emulator/virtualdevice.h"

#include <QByteArray>

/// Lines to a virtual device, and what it answers.
namespace support {

/// What the device answers to a line, without the line end that each answer has.
inline QByteArray ask(cMyVirtualDevice& device, const QByteArray& line)
{
    const QByteArray reply = device.answer(line + "\r\n");
    return reply.endsWith("\r\n") ? reply.left(reply.size() - 2) : "no line end: " + reply;
}

/// The answer to the last of the lines, which are separated by blanks.
inline QByteArray askAll(cMyVirtualDevice& device, const QByteArray& lines)
{
    QByteArray last;
    for (const QByteArray& line : lines.split(' ')) {
        last = ask(device, line);
    }
    return last;
}

/// A record with the sum that the device expects of data.
inline QByteArray record(int address, const QByteArray& bytes)
{
    QByteArray text;
    text.append(static_cast<char>(bytes.size()));
    text.append(static_cast<char>(address >> 8));
    text.append(static_cast<char>(address));
    text.append('\0');
    text += bytes;
    unsigned sum = 0;
    for (const char byte : qAsConst(text)) {
        sum += static_cast<unsigned char>(byte);
    }
    text.append(static_cast<char>(0U - sum));
    return ':' + text.toHex().toUpper();
}

} // namespace support

#endif
