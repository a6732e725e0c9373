// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_CLI_SETTINGSDIRECTORY_H
#define MIOLKA_TESTS_CLI_SETTINGSDIRECTORY_H

#include "tests/cli/toolrun.h"
#include "tests/support/offeredimage.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QTemporaryDir>

namespace support {

/// A directory for settings files, and the backups that the program makes of them.
class SettingsDirectory
{
public:
    [[nodiscard]] ToolResult run(const QStringList& arguments) const
    {
        return ToolRun(path("data")).run(arguments);
    }

    [[nodiscard]] QString path(const char* name = "a.mio") const
    {
        return m_directory.filePath(QString::fromLatin1(name));
    }

    void write(const QByteArray& image) const { writeFile(path(), settingsText(image)); }

    [[nodiscard]] QStringList backups() const
    {
        QStringList paths;
        for (const QFileInfo& each :
             QDir(path("data/MIOLKAsoft/backups")).entryInfoList(QDir::Files)) {
            paths += each.filePath();
        }
        return paths;
    }

private:
    QTemporaryDir m_directory;
};

/// The image with that number stored in a field.
inline QByteArray with(QByteArray image, const char* name, int number)
{
    put(image, field(name), editor::numberBytes(number, field(name)));
    return image;
}

} // namespace support

#endif
