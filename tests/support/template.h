// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_TEMPLATE_H
#define MIOLKA_TESTS_SUPPORT_TEMPLATE_H

#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QByteArray>

/// The bytes of the default settings, written down here once more so that the built-in file is
/// held against something other than itself.
namespace support {

inline QByteArray templateImage()
{
    QByteArray image(1024, '\0');
    const auto row = [&image](int offset, const char* hex) {
        const QByteArray bytes = QByteArray::fromHex(hex);
        image.replace(offset, bytes.size(), bytes);
    };
    row(0x0000, "01 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00");
    row(0x0020, "00 4E 20 31 33 33 31 39 20 76 31 2E 35 00 00 00");
    row(0x0080, "96 FB 10 0E 06 00 00 00 64 00 32 00 00 00 00 00");
    row(0x0090, "CE FF F6 FF 00 00 00 00 00 00 01 00 00 00 84 7D");
    row(0x00C0, "01 00 00 00 02 00 00 00 00 00 00 00 00 00 00 00");
    row(0x00D0, "00 00 00 00 00 00 00 00 00 00 00 00 00 00 2D 00");
    row(0x00F0, "03 05 0F 1E 00 00 00 00 00 00 00 00 00 00 00 00");
    for (int rule = 0x0100; rule < 0x0200; rule += 8) {
        row(rule, "FE FF 00 00 00 7F 00 00");
    }
    row(0x0200, "00 61 73 74 61 77 79 20 73 70 65 6C 6E 69 61 6A");
    row(0x0210, "61 63 65 20 77 79 6D 61 67 61 6E 69 61 20 6E 6F");
    row(0x0220, "72 6D 79 20 45 4E 20 31 33 33 31 39 3A 32 30 30");
    row(0x0230, "30 0A 76 65 72 2E 20 31 2E 35 00 00 00 00 00 00");
    return image;
}

/// The default settings with that mark wherever the bytes belong to the device. No input shows
/// those, so that they are the same after loading and saving.
inline QByteArray markedImage(char mark)
{
    QByteArray image = templateImage();
    for (const auto& [first, count] : {std::pair(4, 12), std::pair(64, 64), std::pair(160, 60)}) {
        image.replace(first, count, QByteArray(count, mark));
    }
    return image;
}

/// The area's bytes from 0 on, 1024 unless another count is asked for.
inline QByteArray bytesOf(const cMyMemoryArea& area, int count = image::settingsImageSize)
{
    const QVector<quint8> bytes = area.data(0, static_cast<unsigned short>(count));
    return {reinterpret_cast<const char*>(bytes.constData()), bytes.size()};
}

/// What a settings file with this image looks like, computed without the code under test.
inline QByteArray settingsText(const QByteArray& image, const char* lineEnd = "\n")
{
    QByteArray text;
    for (int offset = 0; offset < image.size(); offset += 16) {
        QByteArray record = QByteArray::fromHex("10000000") + image.mid(offset, 16);
        record[1] = static_cast<char>(offset >> 8);
        record[2] = static_cast<char>(offset);
        unsigned sum = 0;
        for (const char byte : qAsConst(record)) {
            sum += static_cast<unsigned char>(byte);
        }
        record.append(static_cast<char>(0U - sum));
        text += ':' + record.toHex().toUpper() + lineEnd;
    }
    return text + ":00000001FF";
}

} // namespace support

#endif
