// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/wordreader.h"

#include <QIODevice>

#include <algorithm>

namespace {

bool isWhiteSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

} // namespace

std::string_view cMyWordReader::next()
{
    constexpr auto maxLength = static_cast<std::size_t>(image::maxRecordText);

    if ((m_insideWord && !skipWhile(false)) || !skipWhile(true)) {
        return {};
    }
    m_last = '\0';
    // One more tells a word of that length from a longer one.
    while (m_end - m_position <= maxLength && refill()) {
    }
    const char* const begin = m_buffer.data() + m_position;
    const char* const limit = begin + std::min(maxLength, m_end - m_position);
    const char* const end = std::find_if(begin, limit, isWhiteSpace);
    const auto length = static_cast<std::size_t>(end - begin);
    m_position += length;
    m_insideWord = end == limit;
    return {begin, length};
}

bool cMyWordReader::isCut() const
{
    return m_insideWord && m_position < m_end && !isWhiteSpace(m_buffer[m_position]);
}

bool cMyWordReader::skipWhile(bool whiteSpace)
{
    do {
        while (m_position < m_end) {
            if (isWhiteSpace(m_buffer[m_position]) != whiteSpace) {
                m_insideWord = false;
                return true;
            }
            countLine(m_buffer[m_position]);
            ++m_position;
        }
    } while (refill());
    return false;
}

void cMyWordReader::countLine(char character)
{
    if (character == '\r' || (character == '\n' && m_last != '\r')) {
        ++m_line;
    }
    m_last = character;
}

bool cMyWordReader::refill()
{
    std::copy(m_buffer.data() + m_position, m_buffer.data() + m_end, m_buffer.data());
    m_end -= m_position;
    m_position = 0;
    const qint64 count =
        m_device.read(m_buffer.data() + m_end, static_cast<qint64>(m_buffer.size() - m_end));
    if (count <= 0) {
        return false;
    }
    m_end += static_cast<std::size_t>(count);
    return true;
}
