// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/backups.h"

#include "cli/invocation.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "image/storedfile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

QString directoryOf(const cMyInvocation& invocation)
{
    if (invocation.has("backup-dir")) {
        return invocation.value("backup-dir");
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/MIOLKAsoft/backups");
}

/// Creates the file, which must not be there yet. What is wrong in the system's words; empty if
/// nothing is.
QString create(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        return file.errorString();
    }
    const bool isWhole = file.write(text) == text.size();
    const bool isStored = image::syncFile(file) && isWhole;
    QString reason = file.errorString();
    file.close();
    if (isStored) {
        return {};
    }
    // What is no backup must not be taken for one.
    QFile::remove(path);
    return reason;
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
    QByteArray text;
    if (file.open(QIODevice::ReadOnly)) {
        text = file.readAll();
    }
    if (file.error() != QFileDevice::NoError) {
        return {cli::ExitStatus::BadFile,
                {QStringLiteral("%1: no backup can be made: %2").arg(path, file.errorString())}};
    }
    const QFileInfo info(path);
    return store(text, info.completeBaseName(),
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
    QString path = stem + suffix;
    for (int number = 1; QFileInfo::exists(path) && number < mostOfAMillisecond; ++number) {
        path = QStringLiteral("%1-%2%3").arg(stem).arg(number).arg(suffix);
    }
    const QString reason = create(path, text);
    if (!reason.isEmpty()) {
        return {cli::ExitStatus::BadFile,
                {QStringLiteral("%1: no backup can be made, and so nothing was written: %2")
                     .arg(path, reason)}};
    }
    m_path = path;
    return {};
}
