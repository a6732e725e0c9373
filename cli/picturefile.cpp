// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/picturefile.h"

#include "cli/backups.h"
#include "cli/outputfile.h"
#include "image/storedfile.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

const QString converter = QStringLiteral("rsvg-convert");

} // namespace

bool cMyPictureFile::isPng() const
{
    return QFileInfo(m_path).suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) == 0;
}

cMyOutcome cMyPictureFile::failure(const QString& why) const
{
    return {cli::ExitStatus::BadFile, {QStringLiteral("%1: %2").arg(m_path, why)}};
}

cMyOutcome cMyPictureFile::check(bool mayReplace) const
{
    const bool isSvg =
        QFileInfo(m_path).suffix().compare(QLatin1String("svg"), Qt::CaseInsensitive) == 0;
    if (!isSvg && !isPng()) {
        return {cli::ExitStatus::Usage,
                {QStringLiteral("%1: a picture's name ends with .svg or .png").arg(m_path)}};
    }
    cMyOutcome outcome = cli::checkOutputFile(m_path, mayReplace);
    if (!outcome.isDone()) {
        return outcome;
    }
    if (isPng() && QStandardPaths::findExecutable(converter).isEmpty()) {
        return failure(QStringLiteral("a PNG needs the program %1, which is not installed (Debian "
                                      "package librsvg2-bin); an .svg does without it")
                           .arg(converter));
    }
    return {};
}

cMyOutcome cMyPictureFile::store(const QByteArray& svg, cMyBackups& backups) const
{
    QByteArray picture = svg;
    if (isPng()) {
        cMyOutcome made = makePng(svg, picture);
        if (!made.isDone()) {
            return made;
        }
    }
    cMyOutcome kept = backups.keepFile(m_path);
    if (!kept.isDone()) {
        return kept;
    }
    return image::storeFile(m_path, picture)
               ? cMyOutcome()
               : failure(QStringLiteral("the picture cannot be written; is there room on the disk, "
                                        "and may the directory be written to?"));
}

cMyOutcome cMyPictureFile::makePng(const QByteArray& svg, QByteArray& png) const
{
    constexpr int patience = 60000; // in ms
    QProcess process;
    process.start(QStandardPaths::findExecutable(converter),
                  {QStringLiteral("--format"), QStringLiteral("png")});
    process.write(svg);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience)) {
        const QString why = process.errorString();
        process.kill();
        process.waitForFinished();
        return failure(QStringLiteral("%1 did not make a picture: %2").arg(converter, why));
    }
    png = process.readAllStandardOutput();
    const bool isMade = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isMade || !png.startsWith("\x89PNG")) {
        return failure(
            QStringLiteral("%1 did not make a picture: %2")
                .arg(converter, QString::fromUtf8(process.readAllStandardError()).trimmed()));
    }
    return {};
}
