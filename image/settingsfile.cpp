// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/settingsfile.h"

#include "image/filename.h"
#include "image/hexcodec.h"
#include "image/memoryarea.h"
#include "image/wordreader.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

constexpr std::string_view endOfFile = ":00000001FF";

/// Opening a FIFO waits for its other end, and a device node has no end.
bool isRegularFile(const QString& path)
{
    return image::isEncodable(path) && QFileInfo(path).isFile();
}

/// Such a link would itself be replaced by the file.
bool isLinkInALoop(const QString& path)
{
    constexpr int mostLinks = 40;
    QFileInfo file(path);
    int links = 0;
    while (file.isSymLink() && links < mostLinks) {
        file.setFile(file.symLinkTarget());
        ++links;
    }
    return links == mostLinks;
}

bool mayBeReplaced(const QString& path)
{
    return !image::isMangled(path) && !isLinkInALoop(path) &&
           (!QFileInfo::exists(path) || isRegularFile(path));
}

} // namespace

namespace image {

bool readSettingsFile(const QString& path, cMyMemoryArea& area)
{
    QFile file(path);
    if (!isRegularFile(path) || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    cMyWordReader words(file);
    cMyRecordFields fields;
    for (std::string_view word = words.next(); !word.empty() && word != endOfFile;
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
    if (!mayBeReplaced(path)) {
        return false;
    }
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    const QByteArray text =
        area.toHex(0, settingsImageSize, settingsRecordLength).join('\n').toLatin1();
    // commit() alone may report success for contents that the disk had no room for.
    if (file.write(text) != text.size() || !file.flush() || file.error() != QFileDevice::NoError) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        return false;
    }
    area.clearModified();
    return true;
}

} // namespace image
