// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_FUZZ_LINES_H
#define MIOLKA_FUZZ_LINES_H

#include <QByteArrayList>
#include <QStringList>

#include <cstddef>
#include <cstdint>

/// Words and lines as the program must find them, by the plainest code that does it, and bytes cut
/// into pieces.
namespace fuzz {

/// What stands between ASCII white space, each word cut to the longest record.
[[nodiscard]] QByteArrayList words(const QByteArray& text);

/// The complete lines among the bytes that a device sent: no longer than lines are kept, without
/// NULs in front, ended by the first NUL or by the line feed.
[[nodiscard]] QByteArrayList deviceLines(const QByteArray& bytes);

/// What an exchange hands on of them.
[[nodiscard]] QStringList replies(const QByteArrayList& lines);

/// An input whose first line says how the rest of it comes.
class SteppedInput
{
public:
    SteppedInput(const std::uint8_t* bytes, std::size_t size);

    /// All of it, without the first line.
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

    /// The next number: 0 for "0", 1 for "1" and so on to 255, round and round; 1 if there are
    /// none.
    int nextStep();

    /// The next bytes, as many as the next number says; nothing at the end.
    QByteArray nextPiece();

    [[nodiscard]] bool atEnd() const { return m_position >= m_bytes.size(); }

private:
    QByteArray m_steps;
    QByteArray m_bytes;
    int m_step = 0;
    int m_position = 0;
};

} // namespace fuzz

#endif
