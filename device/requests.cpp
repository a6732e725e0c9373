// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/requests.h"

#include "device/protocol.h"
#include "image/memoryarea.h"

#include <array>

namespace device {

namespace {

struct StatusRegion
{
    MemoryType area;
    int start;
    int length;
    unsigned short recordLength;
};

constexpr std::array<StatusRegion, 10> statusRegions = {{
    {EEPROM, 0, 4, 4},      // settings version
    {EEPROM, 16, 48, 16},   // author, title
    {EEPROM, 512, 512, 16}, // description
    {FLASH, 65504, 16, 16}, // sound library: language
    {FLASH, 65532, 4, 4},   // sound library: version
    {OTP, 0, 7, 7},         // serial number, hardware version, memory size
    {RAM, 330, 2, 2},       // maximum depth
    {RAM, 350, 2, 2},       // dive time
    {RAM, 1068, 1, 1},      // self-test flags
    {ROM, 252, 4, 4},       // firmware version
}};

void append(QStringList& lines, const QString& line)
{
    lines.append(line + QLatin1String(lineEnd));
}

void appendTransfer(QStringList& lines, const char* direction, MemoryType area,
                    const QStringList& records)
{
    append(lines, QLatin1String(rootWord));
    append(lines, QLatin1String(hexWord));
    const QString word = memoryWord(area);
    if (!word.isEmpty()) {
        append(lines, word);
    }
    append(lines, QLatin1String(direction));
    for (const QString& record : records) {
        append(lines, record);
    }
}

QStringList transfer(const char* direction, MemoryType area, const QStringList& records)
{
    constexpr int wordLines = 4;
    QStringList lines;
    // A sound library has half a million records.
    lines.reserve(records.size() + wordLines);
    appendTransfer(lines, direction, area, records);
    return lines;
}

} // namespace

QStringList writeRequest(MemoryType area, const QStringList& records)
{
    return transfer(writeWord, area, records);
}

QStringList readRequest(MemoryType area, const QStringList& records)
{
    return transfer(readWord, area, records);
}

QStringList statusRequest()
{
    // The records only name addresses and lengths, so one area of zeros serves every memory.
    constexpr quint32 lastAddress = 65535;
    cMyMemoryArea zeros;
    zeros.setData(lastAddress, 0);
    QStringList lines;
    for (const StatusRegion& region : statusRegions) {
        appendTransfer(lines, readWord, region.area,
                       zeros.toHex(region.start, region.length, region.recordLength));
    }
    return lines;
}

QStringList commandRequest(const char* word)
{
    QStringList lines;
    append(lines, QLatin1String(word));
    return lines;
}

} // namespace device
