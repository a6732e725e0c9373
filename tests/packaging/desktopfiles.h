// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_PACKAGING_DESKTOPFILES_H
#define MIOLKA_TESTS_PACKAGING_DESKTOPFILES_H

#include "tests/support/contents.h"

#include <QProcess>
#include <QStandardPaths>
#include <QXmlStreamReader>

namespace support {

/// The file of the application's id with this suffix, as it is installed.
inline QString desktopFile(const QString& suffix)
{
    return QStringLiteral(MIOLKA_BINARY_DIR "/packaging/desktop/" MIOLKA_APPLICATION_ID) + suffix;
}

inline QString sourceFile(const QString& name)
{
    return QStringLiteral(MIOLKA_SOURCE_DIR "/") + name;
}

/// The values of a key in the launcher, at its semicolons.
inline QStringList launcherValues(const QString& key)
{
    const QString text = QString::fromUtf8(contentsOf(desktopFile(QStringLiteral(".desktop"))));
    const QString start = key + QLatin1Char('=');
    const QStringList lines = text.split(QLatin1Char('\n')).filter(start);
    for (const QString& line : lines) {
        if (line.startsWith(start)) {
            QStringList values = line.mid(start.size()).split(QLatin1Char(';'));
            values.removeAll(QString());
            return values;
        }
    }
    return {};
}

/// What stands in every element of that name: its attribute, or its text if none is named.
inline QStringList elements(const QString& path, const QString& name, const QString& attribute = {})
{
    QStringList found;
    QXmlStreamReader xml(contentsOf(path));
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == name) {
            found += attribute.isEmpty()
                         ? xml.readElementText(QXmlStreamReader::IncludeChildElements)
                         : xml.attributes().value(attribute).toString();
        }
    }
    return xml.hasError() ? QStringList() : found;
}

/// How a program of the system ended, and what it said.
struct Spoken
{
    int status = -1; ///< -1 if it did not start, crashed or never ended
    QString text;
};

inline bool isInstalled(const QString& program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

inline Spoken run(const QString& program, const QStringList& arguments,
                  const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.closeWriteChannel();
    const bool isEnded = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return {isEnded ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput())};
}

} // namespace support

#endif
