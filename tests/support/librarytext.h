// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_LIBRARYTEXT_H
#define MIOLKA_TESTS_SUPPORT_LIBRARYTEXT_H

#include "image/hexcodec.h"

#include <QByteArray>
#include <QRandomGenerator>

namespace support {

/// Flash memory with a sound library: its language and version where the device looks for them,
/// and noise, which is what sound looks like, everywhere else.
inline QByteArray libraryImage(int size, quint32 seed, const QByteArray& language,
                               const QByteArray& version)
{
    constexpr int languageAddress = 0xFFE0;
    constexpr int languageSize = 16;
    constexpr int versionAddress = 0xFFFC;
    QRandomGenerator noise(seed);
    QByteArray image(size, Qt::Uninitialized);
    noise.generate(reinterpret_cast<quint32*>(image.data()),
                   reinterpret_cast<quint32*>(image.data() + size));
    image.replace(languageAddress, languageSize, language.leftJustified(languageSize, '\0'));
    return image.replace(versionAddress, version.size(), version);
}

/// One Intel HEX line of the public format, with a Windows line end.
inline QByteArray libraryRecord(quint8 type, quint16 offset, const QByteArray& data)
{
    cMyRecordFields fields;
    fields.type = type;
    fields.offset = offset;
    fields.size = static_cast<int>(data.size());
    std::copy(data.cbegin(), data.cend(), fields.data.begin());
    cMyRecordLine line;
    line.count = static_cast<quint8>(data.size());
    line.offset = offset;
    line.type = type;
    line.payload = fields.data.data();
    line.payloadSize = fields.size;
    line.checksum = image::standardChecksum(fields);
    QByteArray text(image::recordTextSize(fields.size), Qt::Uninitialized);
    image::encodeRecord(line, text.data());
    return text + "\r\n";
}

/// A library file that fills the flash memory from 0 on, in records of 16 bytes.
inline QByteArray libraryText(const QByteArray& image)
{
    constexpr int recordSize = 16;
    constexpr int segmentSize = 0x10000;
    QByteArray text;
    for (int address = 0; address < image.size(); address += recordSize) {
        if (address % segmentSize == 0) {
            const int segment = address / segmentSize;
            text += libraryRecord(image::ExtendedLinearAddressRecord, 0,
                                  QByteArray(1, static_cast<char>(segment >> 8)) +
                                      static_cast<char>(segment));
        }
        text += libraryRecord(image::DataRecord, static_cast<quint16>(address % segmentSize),
                              image.mid(address, recordSize));
    }
    return text + libraryRecord(image::EndOfFileRecord, 0, {});
}

} // namespace support

#endif
