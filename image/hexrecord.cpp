// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexrecord.h"

#include "image/hexcodec.h"

#include <algorithm>

cMyHexRecord::cMyHexRecord(QObject* parent) : QObject(parent) {}

cMyHexRecord::cMyHexRecord(unsigned short offset, const QVector<unsigned char>& data,
                           QObject* parent)
    : QObject(parent), m_offset(data.isEmpty() ? quint16(0) : offset),
      m_type(data.isEmpty() ? image::EndOfFileRecord : image::DataRecord), m_data(data)
{
}

cMyHexRecord::cMyHexRecord(unsigned short offset, std::initializer_list<unsigned char> data,
                           QObject* parent)
    : cMyHexRecord(offset, QVector<unsigned char>(data), parent)
{
}

cMyHexRecord::cMyHexRecord(unsigned short segment, QObject* parent)
    : QObject(parent), m_type(image::ExtendedLinearAddressRecord), m_segment(segment)
{
}

quint8 cMyHexRecord::checksum() const
{
    return image::recordChecksum(m_offset, m_type, m_segment, m_data.constData(),
                                 static_cast<int>(m_data.size()));
}

QString cMyHexRecord::toString() const
{
    const quint8 segment[] = {static_cast<quint8>(m_segment >> 8), static_cast<quint8>(m_segment)};
    cMyRecordLine line;
    line.count = static_cast<quint8>(m_data.size());
    line.offset = m_offset;
    line.type = m_type;
    line.checksum = checksum();
    if (m_type == image::DataRecord || m_type == image::EndOfFileRecord) {
        line.payload = m_data.constData();
        line.payloadSize = static_cast<int>(m_data.size());
    } else if (m_type == image::ExtendedLinearAddressRecord) {
        line.payload = segment;
        line.payloadSize = 2;
    }
    QByteArray text(image::recordTextSize(line.payloadSize), Qt::Uninitialized);
    image::encodeRecord(line, text.data());
    return QString::fromLatin1(text);
}

bool cMyHexRecord::fromString(const QString& line)
{
    std::array<char, image::maxRecordText> text;
    const auto length = std::min<QString::size_type>(line.size(), image::maxRecordText);
    std::transform(line.cbegin(), line.cbegin() + length, text.begin(), [](QChar character) {
        return character.unicode() < 0x80 ? static_cast<char>(character.unicode()) : '\x7F';
    });

    cMyRecordFields fields;
    const image::RecordFault fault =
        image::decodeRecord({text.data(), static_cast<std::size_t>(length)}, fields);
    if (fault == image::RecordFault::Count || fault == image::RecordFault::StartCode ||
        fault == image::RecordFault::Header) {
        return false;
    }
    m_offset = fields.offset;
    m_type = fields.type;
    m_data.resize(fields.size);
    std::copy_n(fields.data.cbegin(), fields.size, m_data.begin());
    return fault == image::RecordFault::None && checksum() == fields.checksum;
}

qint16 cMyHexRecord::getQint16(unsigned char index) const
{
    constexpr int bytesFromIndex = 3;
    if (m_data.size() - index < bytesFromIndex) {
        return 0;
    }
    return static_cast<qint16>(m_data.at(index) | (m_data.at(index + 1) << 8));
}
