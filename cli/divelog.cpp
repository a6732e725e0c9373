// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"

#include "image/filename.h"

#include <QFile>
#include <QFileInfo>

namespace {

cMyOutcome unreadable(const QString& file, const QString& why)
{
    return {cli::ExitStatus::BadFile, {QStringLiteral("%1: %2").arg(file, why)}};
}

/// For what never has a second dive, whatever is in it.
cMyOutcome noSuchDive(const QString& file, const char* what, int dive)
{
    return {cli::ExitStatus::Usage,
            {QStringLiteral("%1: %2 is one dive, and no dive %3")
                 .arg(file, QLatin1String(what))
                 .arg(dive)}};
}

QString whyNoFile(const QString& path)
{
    if (!image::isEncodable(path) || !QFileInfo::exists(path)) {
        return QStringLiteral("there is no such file, and no such built-in profile (%1)")
            .arg(cli::builtInProfiles().join(QStringLiteral(", ")));
    }
    return QFileInfo(path).isDir() ? QStringLiteral("is a directory")
                                   : QStringLiteral("is no regular file");
}

bool isXml(const QByteArray& contents, const QString& file)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    for (const char* known : {"xml", "ssrf", "uddf"}) {
        if (suffix == QLatin1String(known)) {
            return true;
        }
    }
    const QByteArray mark = QByteArrayLiteral("\xEF\xBB\xBF");
    constexpr int glance = 64;
    const QByteArray start = contents.mid(contents.startsWith(mark) ? mark.size() : 0, glance);
    return start.trimmed().startsWith('<');
}

} // namespace

namespace cli {

cMyOutcome readDiveLog(const QString& profile, int dive, cMyDiveLog& log)
{
    log = {};
    log.profile = builtInProfile(profile);
    if (!log.profile.points().isEmpty()) {
        log.name = profile;
        return dive == 1 ? cMyOutcome() : noSuchDive(profile, "this", dive);
    }
    if (!image::isRegularFile(profile)) {
        return unreadable(profile, whyNoFile(profile));
    }
    QFile file(profile);
    if (!file.open(QIODevice::ReadOnly)) {
        return unreadable(profile, file.errorString());
    }
    // The size that a system tells of a file need not be what can be read.
    const QByteArray contents = file.read(longestDiveLog + 1);
    if (contents.size() > longestDiveLog) {
        return unreadable(profile, QStringLiteral("the file is longer than %1 bytes, which is more "
                                                  "than a log of dives needs")
                                       .arg(longestDiveLog));
    }
    return parseDiveLog(contents, profile, dive, log);
}

cMyOutcome parseDiveLog(const QByteArray& contents, const QString& file, int dive, cMyDiveLog& log)
{
    log = {};
    log.name = QFileInfo(file).fileName();
    if (isXml(contents, file)) {
        return parseDiveXml(contents, file, dive, log);
    }
    if (dive != 1) {
        return noSuchDive(file, "a table", dive);
    }
    return parseDiveTable(contents, file, log.profile);
}

} // namespace cli
