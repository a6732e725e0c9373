// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_TRACE_H
#define MIOLKA_EMULATOR_TRACE_H

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>

/// What went to and from the devices, as a text file: a time in seconds since the start, ">" to the
/// device, "<" from it or "*" for what it spoke, its number where there are several, and the bytes.
/// Each line is in the file when the call returns. For one thread.
class cMyTrace
{
public:
    /// To the device, from it, or said by it aloud.
    enum class Direction { ToDevice, FromDevice, Spoken };

    cMyTrace();

    /// Starts the file anew; false if it cannot be written or is no regular file: opening a pipe
    /// would wait for its reader.
    bool open(const QString& path);

    /// Whether something could not be written.
    [[nodiscard]] bool hasFailed() const { return m_failed; }

    /// Numbers stand in the lines from now on.
    void setNumbered(bool numbered) { m_numbered = numbered; }

    /// Nothing while no file is open. Bytes are one line, or what came of one.
    void write(Direction direction, int device, const QByteArray& bytes);

    /// Bytes as printable ASCII: others, and the backslash, as C writes them in a string.
    [[nodiscard]] static QByteArray escaped(const QByteArray& bytes);

private:
    QFile m_file;
    QElapsedTimer m_clock;
    bool m_numbered = false;
    bool m_failed = false;
};

#endif
