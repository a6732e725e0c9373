// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_LINEASSEMBLER_H
#define MIOLKA_DEVICE_LINEASSEMBLER_H

#include <QByteArray>

#include <optional>

/// Puts lines together from the packets that USB happens to cut them into.
class cMyLineAssembler
{
public:
    /// Bytes of a line that are kept; what a longer one has beyond is dropped. A record is shorter
    /// by far, so a peer that never ends its line must not cost memory.
    static constexpr int longestLine = 4096;

    cMyLineAssembler();

    /// Takes the bytes of a packet, which are copied. The count is not negative.
    void append(const char* bytes, qint64 count);

    /// The next complete line with its line end, cut before its first NUL. NULs that stand at its
    /// start are padding and are dropped first. Nothing while no line is complete.
    std::optional<QByteArray> takeLine();

    /// Whether takeLine() will give one.
    [[nodiscard]] bool hasLine() const { return m_bytes.indexOf('\n', m_start) >= 0; }

    /// Forgets everything that was not taken.
    void clear();

private:
    QByteArray m_bytes;
    QByteArray::size_type m_start = 0; ///< of the first line not yet taken
    int m_lineSize = 0;                ///< bytes of the incomplete line at the end
};

#endif
