// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/support.h"
#include "image/hexcodec.h"
#include "image/hexrecord.h"

#include <algorithm>
#include <string_view>

using fuzz::expect;

namespace {

constexpr int dataPosition = 9;

/// What a line says, cut out of it field by field.
struct Model
{
    int count = 0;
    int offset = 0;
    int type = 0;
    QVector<quint8> data;
    int checksum = 0;
    bool hasHeader = false; ///< all up to the type
    bool isRead = false;    ///< all of it; the checksum may be wrong
};

constexpr int noNumber = -1;

int hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const bool isLetter = (digit >= 'A' && digit <= 'F') || (digit >= 'a' && digit <= 'f');
    return isLetter ? (digit & 0xF) + 9 : noNumber;
}

/// The number that stands in so many characters, or in as many as there are.
int hexNumber(std::string_view line, std::size_t position, std::size_t width)
{
    if (position >= line.size()) {
        return noNumber;
    }
    int value = 0;
    for (const char character : line.substr(position, width)) {
        const int digit = hexDigit(character);
        if (digit == noNumber) {
            return noNumber;
        }
        value = 16 * value + digit;
    }
    return value;
}

Model modelOf(std::string_view line)
{
    Model model;
    const int count = hexNumber(line, 1, 2);
    const int offset = hexNumber(line, 3, 4);
    const int type = hexNumber(line, 7, 2);
    if (line.substr(0, 1) != ":" || std::min({count, offset, type}) == noNumber) {
        return model;
    }
    model.hasHeader = true;
    model.count = count;
    model.offset = offset;
    model.type = type;
    const std::size_t checksumPosition = dataPosition + 2 * static_cast<std::size_t>(count);
    const std::size_t end = std::min(checksumPosition, line.size());
    for (std::size_t position = dataPosition; position < end; position += 2) {
        const int byte = hexNumber(line, position, 2);
        if (byte == noNumber) {
            return model;
        }
        model.data.append(static_cast<quint8>(byte));
    }
    const int checksum = hexNumber(line, checksumPosition, 2);
    model.isRead = checksum != noNumber;
    model.checksum = checksum;
    return model;
}

/// The sum by the device's rules for a record that carries no segment.
int sumOf(const Model& model)
{
    int sum = (model.offset >> 8) + model.offset + model.type;
    if (model.type == image::DataRecord) {
        sum += model.data.size();
        for (const quint8 byte : model.data) {
            sum += byte;
        }
    }
    return -sum & 0xFF;
}

void checkCodec(std::string_view line, const Model& model)
{
    cMyRecordFields fields;
    const image::RecordFault fault = image::decodeRecord(line, fields);
    expect((fault == image::RecordFault::None) == model.isRead, "what has all fields is decoded");
    if (fault == image::RecordFault::None) {
        expect(fields.checksum == model.checksum, "the sum is the one that stands there");
        expect(image::isChecksumRight(fields) == (sumOf(model) == model.checksum),
               "the sum is right by the device's rules");
    }
}

void checkNumbers(const cMyHexRecord& record)
{
    const QVector<quint8> data = record.data();
    const int size = static_cast<int>(data.size());
    for (int index = std::max(0, size - 4); index <= std::min(size, 255); ++index) {
        const bool isFollowed = index + 2 < data.size();
        const int number = isFollowed ? data.at(index) | data.at(index + 1) << 8 : 0;
        expect(record.getQint16(static_cast<quint8>(index)) == static_cast<qint16>(number),
               "a number has two bytes and one behind it");
    }
}

/// A line that was read prints as it stands, but for the case of its digits, what is behind the
/// sum, and a sum of one digit. Types without data in print lose it, and type 4 its address.
void checkPrinted(const cMyHexRecord& record, const QString& line, const Model& model)
{
    const QString printed = record.toString();
    cMyHexRecord again;
    const bool isRead = again.fromString(printed);
    const bool keepsData = model.type == image::DataRecord || model.type == image::EndOfFileRecord;
    if (keepsData) {
        const QString sum = QString::number(model.checksum + 0x100, 16).right(2);
        const QString upToSum = line.left(dataPosition + 2 * model.count);
        expect(printed == (upToSum + sum).toUpper(), "a record prints as it was read");
    }
    const bool isWhole =
        keepsData || (model.data.isEmpty() && model.type != image::ExtendedLinearAddressRecord);
    if (isWhole) {
        expect(isRead && again.offset() == record.offset() && again.type() == record.type() &&
                   again.data() == record.data(),
               "what was printed reads back to the same record");
    }
    if (isRead) {
        expect(again.toString() == printed, "what reads back prints as before");
    }
}

/// Any offset and data make a record that reads back, whatever the line was.
void checkMade(const Model& model)
{
    const cMyHexRecord made(static_cast<quint16>(model.offset), model.data);
    cMyHexRecord read;
    expect(read.fromString(made.toString()) && read.data() == model.data,
           "a record that was made reads back");
    expect(read.offset() == (model.data.isEmpty() ? 0 : model.offset),
           "a record that was made keeps its offset, unless it is the end");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const Model model = modelOf(text);
    checkCodec(text, model);
    const QString line = QString::fromLatin1(text.data(), static_cast<int>(size));

    const QVector<quint8> before = {0x42};
    cMyHexRecord record(0x20, before);
    const bool isRead = record.fromString(line);
    expect(isRead == (model.isRead && sumOf(model) == model.checksum),
           "a line is read that has all fields and the right sum");
    expect(record.offset() == (model.hasHeader ? model.offset : 0x20) &&
               record.type() == model.type &&
               record.data() == (model.hasHeader ? model.data : before),
           "a record holds what was read before the fault, or what it held");
    expect(record.checksum() == (model.hasHeader ? sumOf(model) : 0x9D), "a record knows its sum");
    checkNumbers(record);
    if (isRead) {
        checkPrinted(record, line, model);
    }
    checkMade(model);
    return 0;
}
