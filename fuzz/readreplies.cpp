// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "fuzz/lines.h"
#include "fuzz/support.h"
#include "image/hexrecord.h"

using fuzz::expect;

namespace {

const QStringList memoryLines = {"#EEPROM\r\n", "#FLASH\r\n", "#OTP\r\n", "#RAM\r\n", "#ROM\r\n"};

bool isRecord(const QString& reply)
{
    return reply.startsWith(QLatin1Char(':')) && reply != QStringLiteral(":00000001FF\r\n") &&
           cMyHexRecord().fromString(reply);
}

bool isSame(const cMyReadRecord& one, const cMyReadRecord& other)
{
    return one.area == other.area && one.address == other.address && one.data == other.data;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QStringList replies = fuzz::replies(fuzz::deviceLines(fuzz::bytesOf(bytes, size)));
    const QVector<cMyReadRecord> records = device::readRecords(replies);
    int area = EEPROM;
    QStringList telling;
    auto next = records.cbegin();
    for (const QString& reply : replies) {
        const int named = static_cast<int>(memoryLines.indexOf(reply));
        area = named < 0 ? area : named;
        if (named >= 0) {
            telling.append(reply);
        }
        if (!isRecord(reply)) {
            continue;
        }
        telling.append(reply);
        expect(next != records.cend(), "every record counts");
        cMyHexRecord record;
        record.fromString(reply);
        expect(isSame(*next, {static_cast<MemoryType>(area), record.offset(), record.data()}),
               "a record is of the memory named last, and holds what its line says");
        ++next;
    }
    expect(next == records.cend(), "nothing but records counts");

    const QVector<cMyReadRecord> told = device::readRecords(telling);
    expect(std::equal(told.cbegin(), told.cend(), records.cbegin(), records.cend(), isSame),
           "what is neither a memory's word nor a record says nothing");
    return 0;
}
