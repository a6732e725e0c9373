// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/wholerecord.h"

#include <string_view>

namespace {

std::string_view view(const QByteArray& text)
{
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

} // namespace

namespace image {

std::optional<cMyRecordFields> wholeRecord(const QByteArray& text)
{
    cMyRecordFields fields;
    if (decodeRecord(view(text), fields) != RecordFault::None ||
        text.size() != recordTextSize(fields.size)) {
        return std::nullopt;
    }
    return fields;
}

std::optional<quint16> upperAddress(const QByteArray& text)
{
    constexpr int segmentSize = 2;
    constexpr int countPosition = 1;
    constexpr int typePosition = 7;
    if (text.mid(typePosition, 2) != "04") { // nearly always
        return std::nullopt;
    }
    QByteArray counted = text;
    const bool isShort = text.mid(countPosition, 2) == "00";
    if (isShort) {
        counted.replace(countPosition, 2, "02"); // what decodes it as the bytes that it has
    }
    const auto fields = wholeRecord(counted);
    if (!fields || fields->type != ExtendedLinearAddressRecord || fields->size != segmentSize) {
        return std::nullopt;
    }
    const auto segment = static_cast<quint16>(fields->data[0] << 8 | fields->data[1]);
    const quint8 checksum = isShort
                                ? recordChecksum(fields->offset, fields->type, segment, nullptr, 0)
                                : standardChecksum(*fields);
    return checksum == fields->checksum ? std::make_optional(segment) : std::nullopt;
}

} // namespace image
