// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/lineassembler.h"

#include <algorithm>

cMyLineAssembler::cMyLineAssembler()
{
    m_bytes.reserve(longestLine); // kept from line to line
}

void cMyLineAssembler::append(const char* bytes, qint64 count)
{
    const char* const end = std::next(bytes, count);
    while (bytes != end) {
        const char* const feed = std::find(bytes, end, '\n');
        const int part = static_cast<int>(std::distance(bytes, feed));
        const int kept = std::min(part, longestLine - m_lineSize);
        m_bytes.append(bytes, kept);
        m_lineSize += kept;
        bytes = feed;
        if (feed != end) {
            m_bytes.append('\n');
            m_lineSize = 0;
            bytes = std::next(feed);
        }
    }
}

std::optional<QByteArray> cMyLineAssembler::takeLine()
{
    const auto feed = m_bytes.indexOf('\n', m_start);
    if (feed < 0) {
        return std::nullopt;
    }
    const auto first = std::next(m_bytes.cbegin(), m_start);
    const auto last = std::next(m_bytes.cbegin(), feed + 1);
    const auto text = std::find_if(first, last, [](char byte) { return byte != '\0'; });
    const auto textEnd = std::find(text, last, '\0');
    QByteArray line(text, static_cast<int>(std::distance(text, textEnd)));
    m_start = feed + 1;
    if (m_start == m_bytes.size()) {
        m_bytes.resize(0);
        m_start = 0;
    } else if (m_start > longestLine) {
        m_bytes.remove(0, m_start);
        m_start = 0;
    }
    return line;
}

void cMyLineAssembler::clear()
{
    m_bytes.resize(0);
    m_start = 0;
    m_lineSize = 0;
}
