// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/outputfile.h"

#include "cli/backups.h"
#include "cli/console.h"
#include "cli/invocation.h"
#include "image/filename.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QFileInfo>

namespace {

cMyOutcome badFile(const QString& path, const QString& reason)
{
    return {cli::ExitStatus::BadFile, {QStringLiteral("%1: %2").arg(path, reason)}};
}

QString whyNotWritten(const QString& path)
{
    const QString target = image::isMangled(path) ? QString() : image::writeTarget(path);
    if (target.isEmpty()) {
        return QStringLiteral("there can be no file of that name; is its directory there?");
    }
    const QString directory = QFileInfo(target).path();
    return QFileInfo(directory).isWritable()
               ? QStringLiteral("cannot be written; is there room on the disk?")
               : QStringLiteral("cannot be written; the directory %1 does not allow it")
                     .arg(directory);
}

cMyOutcome checkTarget(const QString& path)
{
    if (QFileInfo::exists(path) && !image::isRegularFile(path)) {
        return badFile(path, QStringLiteral("is no regular file"));
    }
    return image::isMangled(path) || image::writeTarget(path).isEmpty()
               ? badFile(path, whyNotWritten(path))
               : cMyOutcome();
}

} // namespace

namespace cli {

cMyOutcome checkOutputFile(const QString& path, bool mayReplace)
{
    if (QFileInfo::exists(path) && !mayReplace) {
        return badFile(path, QStringLiteral("is there already; choose another name, or --force to "
                                            "write over it"));
    }
    return checkTarget(path);
}

cMyOutcome writeImageFile(const QString& path, cMyMemoryArea& image,
                          const cMyInvocation& invocation, cMyConsole& console)
{
    const cMyOutcome outcome = checkOutputFile(path, invocation.has("force"));
    return outcome.isDone() ? replaceImageFile(path, image, invocation, console) : outcome;
}

cMyOutcome replaceImageFile(const QString& path, cMyMemoryArea& image,
                            const cMyInvocation& invocation, cMyConsole& console)
{
    cMyOutcome outcome = checkTarget(path);
    if (!outcome.isDone()) {
        return outcome;
    }
    cMyBackups backups(invocation);
    cMyOutcome kept = backups.keepFile(path);
    if (!kept.isDone()) {
        return kept;
    }
    if (!image::writeSettingsFile(path, image)) {
        return badFile(path, whyNotWritten(path));
    }
    if (!backups.path().isEmpty()) {
        console.say(QStringLiteral("%1: what it held is kept in %2").arg(path, backups.path()));
    }
    return {};
}

} // namespace cli
