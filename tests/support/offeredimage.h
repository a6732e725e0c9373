// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_OFFEREDIMAGE_H
#define MIOLKA_TESTS_SUPPORT_OFFEREDIMAGE_H

#include "editor/fieldcodec.h"
#include "editor/tablemodel.h"
#include "image/settingsfile.h"

#include <QRandomGenerator>

/// Images as somebody may have them.
namespace support {

inline QByteArray randomImage(QRandomGenerator& random)
{
    QByteArray image(image::settingsImageSize, '\0');
    for (char& byte : image) {
        byte = static_cast<char>(random.generate());
    }
    return image;
}

inline void put(QByteArray& image, const cMySettingsField& field, const QVector<quint8>& bytes)
{
    for (int i = 0; i < bytes.size(); ++i) {
        image[field.address + i] = static_cast<char>(bytes.at(i));
    }
}

inline const cMySettingsField& field(const char* name)
{
    return editor::settingsField(QString::fromLatin1(name));
}

/// Random bytes, but every choice, every number in a range and gravity hold what an input offers.
inline QByteArray offeredImage(QRandomGenerator& random)
{
    QByteArray image = randomImage(random);
    for (const cMySettingsField& each : editor::settingsFields()) {
        if (!each.optionTable.isEmpty()) {
            const cMyTableModel options(editor::optionTableFile(each));
            const int row = random.bounded(options.rowCount());
            const int value = static_cast<int>(options.number(row, cMyTableModel::Value));
            put(image, each, editor::numberBytes(value, each));
        } else if (each.encoding == FieldEncoding::Unsigned ||
                   each.encoding == FieldEncoding::Signed) {
            const int least = qRound(each.minimum * each.factor);
            const int greatest = qRound(each.maximum * each.factor);
            put(image, each, editor::numberBytes(random.bounded(least, greatest + 1), each));
        }
    }
    const auto altitude = static_cast<qint16>(static_cast<quint8>(image.at(220)) |
                                              (static_cast<quint8>(image.at(221)) << 8));
    const int gravity = editor::storedGravity(altitude, static_cast<quint8>(image.at(222)));
    put(image, field("gravity"), editor::numberBytes(gravity, field("gravity")));
    return image;
}

} // namespace support

#endif
