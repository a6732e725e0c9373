// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/backups.h"

#include "cli/invocation.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

namespace {

QString directoryOf(const cMyInvocation& invocation)
{
    if (invocation.has("backup-dir")) {
        return invocation.value("backup-dir");
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/MIOLKAsoft/backups");
}

/// Creates the file, which must not be there yet.
bool create(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        return false;
    }
    if (file.write(text) != text.size() || !file.flush() || fsync(file.handle()) != 0) {
        file.remove();
        return false;
    }
    return true;
}

} // namespace

cMyBackups::cMyBackups(const cMyInvocation& invocation) : m_directory(directoryOf(invocation)) {}

cMyOutcome cMyBackups::keepImage(const cMyMemoryArea& image, const QString& origin)
{
    const QStringList lines = image.toHex(0, image::settingsImageSize, image::settingsRecordLength);
    return store(lines.join(QLatin1Char('\n')).toLatin1(), origin, QStringLiteral(".mio"));
}

cMyOutcome cMyBackups::keepFile(const QString& path)
{
    if (!QFileInfo::exists(path)) {
        return {};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {cli::ExitStatus::BadFile,
                {QStringLiteral("%1: no backup can be made: %2").arg(path, file.errorString())}};
    }
    const QFileInfo info(path);
    return store(file.readAll(), info.completeBaseName(),
                 info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix());
}

cMyOutcome cMyBackups::store(const QByteArray& text, const QString& origin, const QString& suffix)
{
    constexpr int mostOfAMillisecond = 100;
    const QString stem =
        QDir(m_directory)
            .absoluteFilePath(QStringLiteral("%1-%2").arg(
                origin,
                QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"))));
    QDir().mkpath(m_directory);
    for (int number = 0; number < mostOfAMillisecond; ++number) {
        const QString path =
            stem + (number == 0 ? QString() : QStringLiteral("-%1").arg(number)) + suffix;
        if (create(path, text)) {
            m_path = path;
            return {};
        }
        if (!QFileInfo::exists(path)) {
            break;
        }
    }
    return {cli::ExitStatus::BadFile,
            {QStringLiteral("no backup can be made in %1; nothing was written").arg(m_directory)}};
}
