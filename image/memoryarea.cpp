// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/memoryarea.h"

#include "image/hexrecord.h"

namespace {

constexpr quint32 offsetMask = 0xFFFF;

std::size_t pageOf(quint32 address)
{
    return address >> 16;
}

int offsetOf(quint32 address)
{
    return static_cast<int>(address & offsetMask);
}

} // namespace

cMyMemoryArea::cMyMemoryArea(QObject* parent) : QObject(parent) {}

QVector<quint8> cMyMemoryArea::data(int address, unsigned short count) const
{
    QVector<quint8> run;
    quint8 value = 0;
    auto next = static_cast<quint32>(address);
    while (run.size() < count && data(static_cast<int>(next), &value)) {
        run.append(value);
        ++next;
    }
    return run;
}

bool cMyMemoryArea::data(int address, unsigned char* value) const
{
    const auto position = static_cast<quint32>(address);
    const std::size_t page = pageOf(position);
    if (page >= m_pages.size() || m_pages[page].size() <= offsetOf(position)) {
        return false;
    }
    *value = m_pages[page].at(offsetOf(position));
    return true;
}

QStringList cMyMemoryArea::toHex(int address, int count, unsigned short recordLength) const
{
    QStringList lines;
    quint16 segment = 0;
    QVector<quint8> buffer;
    const auto first = static_cast<quint32>(address);
    const quint32 end = first + static_cast<quint32>(count > 0 ? count : 0);
    for (quint32 next = first; next != end; ++next) {
        const auto nextSegment = static_cast<quint16>(pageOf(next));
        if (nextSegment != segment) {
            segment = nextSegment;
            lines.append(cMyHexRecord(segment).toString());
        }
        quint8 value = 0;
        if (data(static_cast<int>(next), &value)) {
            buffer.append(value);
        }
        if (next + 1 == end || buffer.size() == recordLength) {
            const auto offset = static_cast<quint16>(next + 1 - recordLength);
            lines.append(cMyHexRecord(offset, buffer).toString());
            buffer.clear();
        }
    }
    lines.append(cMyHexRecord(0, {}).toString());
    return lines;
}

void cMyMemoryArea::setData(quint32 address, quint8 value)
{
    const std::size_t page = pageOf(address);
    const int offset = offsetOf(address);
    if (page >= m_pages.size()) {
        m_pages.resize(page + 1);
    }
    if (m_pages[page].size() <= offset) {
        m_pages[page].resize(offset + 1);
    }
    m_pages[page][offset] = value;
    m_modified = true;
}

void cMyMemoryArea::setData(quint32 address, QVector<quint8> data)
{
    for (const quint8 value : qAsConst(data)) {
        setData(address, value);
        ++address;
    }
}
