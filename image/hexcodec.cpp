// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexcodec.h"

#include <algorithm>

namespace {

constexpr int notADigit = -1;

constexpr std::array<qint8, 256> makeDigitTable()
{
    std::array<qint8, 256> table{};
    for (auto& value : table) {
        value = notADigit;
    }
    for (std::size_t digit = 0; digit < 10; ++digit) {
        table['0' + digit] = static_cast<qint8>(digit);
    }
    for (std::size_t digit = 10; digit < 16; ++digit) {
        table['A' + digit - 10] = static_cast<qint8>(digit);
        table['a' + digit - 10] = static_cast<qint8>(digit);
    }
    return table;
}

constexpr std::array<qint8, 256> digitTable = makeDigitTable();

int digitValue(char character) noexcept
{
    return digitTable[static_cast<quint8>(character)];
}

/// The number written in up to width characters from position on, or notADigit if there is none
/// or one of them is no hex digit.
int parseHex(std::string_view text, std::size_t position, std::size_t width) noexcept
{
    if (position >= text.size()) {
        return notADigit;
    }
    int value = 0;
    for (const char character : text.substr(position, width)) {
        const int digit = digitValue(character);
        if (digit < 0) {
            return notADigit;
        }
        value = value * 16 + digit;
    }
    return value;
}

/// Reads whole pairs, then a last single digit as a byte of its own. False at the first character
/// that is no hex digit; the bytes before it are kept.
bool parseData(std::string_view digits, cMyRecordFields& fields) noexcept
{
    fields.size = 0;
    const char* next = digits.data();
    const char* const end = next + digits.size();
    quint8* out = fields.data.data();
    while (end - next >= 2) {
        const int high = digitValue(next[0]);
        const int low = digitValue(next[1]);
        if ((high | low) < 0) {
            fields.size = static_cast<int>(out - fields.data.data());
            return false;
        }
        *out++ = static_cast<quint8>(high * 16 + low);
        next += 2;
    }
    const int last = next == end ? 0 : digitValue(*next);
    if (next != end && last >= 0) {
        *out++ = static_cast<quint8>(last);
    }
    fields.size = static_cast<int>(out - fields.data.data());
    return last >= 0;
}

quint8 sumOf(const quint8* data, int size) noexcept
{
    unsigned sum = 0;
    for (int i = 0; i < size; ++i) {
        sum += data[i];
    }
    return static_cast<quint8>(sum);
}

quint8 headerSum(quint16 offset, quint8 type) noexcept
{
    return static_cast<quint8>((offset >> 8) + offset + type);
}

quint8 twosComplement(unsigned sum) noexcept
{
    return static_cast<quint8>(0U - sum);
}

char* printByte(quint8 value, char* out) noexcept
{
    constexpr char digits[] = "0123456789ABCDEF";
    *out++ = digits[value >> 4];
    *out++ = digits[value & 0x0F];
    return out;
}

} // namespace

namespace image {

RecordFault decodeRecord(std::string_view text, cMyRecordFields& fields) noexcept
{
    constexpr std::size_t dataPosition = 9;

    const int count = parseHex(text, 1, 2);
    if (count < 0) {
        return RecordFault::Count;
    }
    if (text.front() != ':') {
        return RecordFault::StartCode;
    }
    const int offset = parseHex(text, 3, 4);
    const int type = parseHex(text, 7, 2);
    if (offset < 0 || type < 0) {
        return RecordFault::Header;
    }
    fields.offset = static_cast<quint16>(offset);
    fields.type = static_cast<quint8>(type);

    const std::size_t digits = 2 * static_cast<std::size_t>(count);
    const std::size_t available = std::max(text.size(), dataPosition) - dataPosition;
    const std::string_view dataText(text.data() + std::min(dataPosition, text.size()),
                                    std::min(digits, available));
    if (!parseData(dataText, fields)) {
        return RecordFault::Data;
    }
    const int checksum = parseHex(text, dataPosition + digits, 2);
    if (checksum < 0) {
        return RecordFault::Checksum;
    }
    fields.checksum = static_cast<quint8>(checksum);
    return RecordFault::None;
}

quint8 recordChecksum(quint16 offset, quint8 type, quint16 segment, const quint8* data,
                      int size) noexcept
{
    unsigned sum = headerSum(offset, type);
    if (type == DataRecord) {
        sum += sumOf(data, size) + static_cast<unsigned>(size);
    } else if (type == ExtendedLinearAddressRecord) {
        sum += (segment >> 8) + (segment & 0xFFU);
    }
    return twosComplement(sum);
}

bool isChecksumRight(const cMyRecordFields& fields) noexcept
{
    constexpr quint16 noSegment = 0; // a line that was read never carries one
    return recordChecksum(fields.offset, fields.type, noSegment, fields.data.data(), fields.size) ==
           fields.checksum;
}

quint8 standardChecksum(const cMyRecordFields& fields) noexcept
{
    return twosComplement(headerSum(fields.offset, fields.type) +
                          sumOf(fields.data.data(), fields.size) +
                          static_cast<unsigned>(fields.size));
}

char* encodeRecord(const cMyRecordLine& line, char* out) noexcept
{
    *out++ = ':';
    out = printByte(line.count, out);
    out = printByte(static_cast<quint8>(line.offset >> 8), out);
    out = printByte(static_cast<quint8>(line.offset), out);
    out = printByte(line.type, out);
    for (int i = 0; i < line.payloadSize; ++i) {
        out = printByte(line.payload[i], out);
    }
    return printByte(line.checksum, out);
}

} // namespace image
