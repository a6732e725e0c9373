// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/settingsfile.h"

#include "image/filename.h"
#include "image/hexcodec.h"
#include "image/memoryarea.h"
#include "image/storedfile.h"
#include "image/wordreader.h"

#include <QFile>

#include <algorithm>

namespace image {

bool readSettingsFile(const QString& path, cMyMemoryArea& area)
{
    QFile file(path);
    if (!isRegularFile(path) || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    cMyWordReader words(file);
    cMyRecordFields fields;
    for (std::string_view word = words.next(); !word.empty() && word != endOfFileRecord;
         word = words.next()) {
        if (decodeRecord(word, fields) != RecordFault::None || !isChecksumRight(fields)) {
            break;
        }
        QVector<quint8> data(fields.size);
        std::copy_n(fields.data.cbegin(), fields.size, data.begin());
        area.setData(fields.offset, data);
    }
    return true;
}

bool writeSettingsFile(const QString& path, cMyMemoryArea& area)
{
    const QStringList lines = area.toHex(0, settingsImageSize, settingsRecordLength);
    if (!storeFile(path, lines.join('\n').toLatin1())) {
        return false;
    }
    area.clearModified();
    return true;
}

} // namespace image
