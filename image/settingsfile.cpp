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
#include <cerrno>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

/// Whether what was written is on the disk. Only then some systems find out that there is no room
/// for it, that the disk is broken, or that a server does not take it.
bool isStored(QFileDevice& file)
{
    if (!file.flush() || file.error() != QFileDevice::NoError) {
        return false;
    }
#ifdef Q_OS_UNIX
    int result = -1;
    do {
        result = fsync(file.handle());
    } while (result != 0 && errno == EINTR);
    // A file system that does not know the call has no better answer.
    return result == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
#else
    return true;
#endif
}

/// Writes over a file where its directory takes no new one. What is longer than the file goes
/// behind its end first, since only that can fail for want of room; then the rest is written over
/// the old bytes in one piece. If anything fails the old bytes are put back.
bool overwrite(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const qint64 oldSize = file.size();
    const QByteArray old = file.read(text.size());
    if (old.size() != std::min<qint64>(oldSize, text.size())) {
        return false;
    }
    const QByteArray behind = text.mid(old.size());
    if (!file.seek(old.size()) || file.write(behind) != behind.size() || !isStored(file)) {
        file.resize(oldSize);
        return false;
    }
    if (!file.seek(0) || file.write(text.constData(), old.size()) != old.size() ||
        !isStored(file)) {
        file.seek(0);
        file.write(old);
        file.resize(oldSize);
        return false;
    }
    return oldSize <= text.size() || file.resize(text.size());
}

/// Stores the text beside the file and then puts it in the file's place.
bool replace(QSaveFile& file, const QByteArray& text)
{
    // commit() alone may report success for contents that the disk had no room for.
    if (file.write(text) != text.size() || !isStored(file)) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool store(const QString& path, const QByteArray& text)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        return replace(file, text);
    }
    const QFileInfo directory(QFileInfo(path).path());
    return !directory.isWritable() && overwrite(path, text);
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
    const QString target = isMangled(path) ? QString() : writeTarget(path);
    if (target.isEmpty() || (QFileInfo::exists(target) && !isRegularFile(target))) {
        return false;
    }
    const QStringList lines = area.toHex(0, settingsImageSize, settingsRecordLength);
    if (!store(target, lines.join('\n').toLatin1())) {
        return false;
    }
    area.clearModified();
    return true;
}

} // namespace image
