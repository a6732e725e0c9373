// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_WORDREADER_H
#define MIOLKA_IMAGE_WORDREADER_H

#include "image/hexcodec.h"

#include <QtGlobal>

#include <array>
#include <string_view>

class QIODevice;

/// Splits a device into words at ASCII white space, in memory that does not grow with the input.
///
/// It decides on bytes alone: a byte-order mark, NUL or no-break space is part of a word. A word
/// longer than a record can be is cut to image::maxRecordText characters; the rest of it is
/// skipped. The device is not owned and must outlive the reader.
class cMyWordReader
{
public:
    /// The device is open for reading, and read from where it stands.
    explicit cMyWordReader(QIODevice& device) : m_device(device) {}

    /// The next word; empty at the end or when the device can no longer be read. It stays valid
    /// until the next call.
    std::string_view next();

    /// The line of the text that the last word stands in, counted from 1. A line ends with a line
    /// feed, a carriage return, or both.
    [[nodiscard]] qint64 line() const { return m_line; }

    /// Whether there was more of the last word.
    [[nodiscard]] bool isCut() const;

private:
    /// Keeps the bytes from m_position on and reads more behind them; false if there are none.
    bool refill();
    bool skipWhile(bool whiteSpace);
    void countLine(char character);

    QIODevice& m_device;
    std::array<char, 65536> m_buffer;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    bool m_insideWord = false;
    qint64 m_line = 1;
    char m_last = '\0'; ///< white space that was passed over last
};

#endif
