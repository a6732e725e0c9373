// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/storedfile.h"

#include "image/disksync.h"
#include "image/filename.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

/// Writes over a file where its directory takes no new one. What is longer than the file goes
/// behind its end first, since only that can fail for want of room; then the rest is written over
/// the old bytes in one piece. If anything fails the old bytes are put back.
bool overwrite(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const qint64 oldSize = file.size();
    const QByteArray old = file.read(bytes.size());
    if (old.size() != std::min<qint64>(oldSize, bytes.size())) {
        return false;
    }
    const QByteArray behind = bytes.mid(old.size());
    if (!file.seek(old.size()) || file.write(behind) != behind.size() || !image::syncFile(file)) {
        file.resize(oldSize);
        return false;
    }
    if (!file.seek(0) || file.write(bytes.constData(), old.size()) != old.size() ||
        !image::syncFile(file)) {
        file.seek(0);
        file.write(old);
        file.resize(oldSize);
        return false;
    }
    return oldSize <= bytes.size() || file.resize(bytes.size());
}

/// Stores the bytes beside the file and then puts it in the file's place.
bool replace(QSaveFile& file, const QByteArray& bytes)
{
    // commit() alone may report success for contents that the disk had no room for.
    if (file.write(bytes) != bytes.size() || !image::syncFile(file)) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool store(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        return replace(file, bytes);
    }
    const QFileInfo directory(QFileInfo(path).path());
    return !directory.isWritable() && overwrite(path, bytes);
}

} // namespace

namespace image {

bool syncFile(QFileDevice& file)
{
    return file.flush() && file.error() == QFileDevice::NoError && syncDescriptor(file.handle());
}

bool storeFile(const QString& path, const QByteArray& bytes)
{
    const QString target = isMangled(path) ? QString() : writeTarget(path);
    if (target.isEmpty() || (QFileInfo::exists(target) && !isRegularFile(target))) {
        return false;
    }
    return store(target, bytes);
}

} // namespace image
