// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_WORDREADER_H
#define MIOLKA_IMAGE_WORDREADER_H

#include "image/hexcodec.h"

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
    explicit cMyWordReader(QIODevice& device) : m_device(device) {}

    /// The next word; empty at the end or when the device can no longer be read. It stays valid
    /// until the next call.
    std::string_view next();

private:
    /// Keeps the bytes from m_position on and reads more behind them; false if there are none.
    bool refill();
    bool skipWhile(bool whiteSpace);

    QIODevice& m_device;
    std::array<char, 65536> m_buffer;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    bool m_insideWord = false;
};

#endif
