// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"
#include "docs/manual/scenes.h"
#include "image/filename.h"

#include <QApplication>
#include <QLockFile>
#include <QLoggingCategory>
#include <QTextStream>
#include <QTranslator>

namespace {

/// Pictures do not depend on who builds the program: neither on a home directory, which is another
/// and empty one while they are taken, nor on what the desktop or the language would change.
void forgetTheUser(const QTemporaryDir& home)
{
    const QByteArray place = QFile::encodeName(home.path());
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                             "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, place);
    }
    for (const char* name : {"QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "QT_FONT_DPI",
                             "QT_SCREEN_SCALE_FACTORS", "XDG_CURRENT_DESKTOP"}) {
        qunsetenv(name);
    }
    qputenv("LC_ALL", "C.UTF-8");
    // Paper shows more dots than a screen.
    qputenv("QT_SCALE_FACTOR", "2");
}

/// Who has the port that the virtual device gets, if it is another process.
QString portHolder()
{
    for (const char* directory : {"/var/lock", "/run/lock"}) {
        const QLockFile lock(QString::fromLatin1(directory) + QStringLiteral("/LCK..ttyACM0"));
        qint64 process = 0;
        QString host;
        QString program;
        if (lock.getLockInfo(&process, &host, &program) &&
            process != QCoreApplication::applicationPid()) {
            return QStringLiteral("%1 (process %2)").arg(program).arg(process);
        }
    }
    return {};
}

} // namespace

/// Takes the manual's pictures. To be run by miolka-emulator, with nothing plugged in: puts them in
/// the directory named first, tells the emulator through the pipe named second what to do, shows
/// the settings file named third and the rules of those behind it. Ends with 1, and says why, if a
/// picture could not be taken.
int main(int argc, char* argv[])
{
    const QTemporaryDir home;
    forgetTheUser(home);
    app::prepare();
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0); // or it depends on the moment whether it is seen
    QTranslator translator;
    app::installCatalogue(translator);
    // What this screen without a desktop cannot do is no news.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\ndefault.warning=false"));
    QTextStream err(stderr);
    QStringList paths;
    for (int i = 1; i < argc; ++i) {
        paths += image::decodeFileName(argv[i]);
    }
    constexpr int fewest = 3;
    if (paths.size() < fewest) {
        err << "usage: miolka-emulator --unplugged --control PIPE -- " << argv[0]
            << " DIRECTORY PIPE SETTINGS [EXAMPLE...]\n";
        return 2;
    }
    const QDir directory(paths.at(0));
    directory.mkpath(QStringLiteral("."));
    cMyScenes scenes(directory, {paths.at(1), paths.at(2), paths.mid(fewest)});
    if (scenes.run()) {
        return 0;
    }
    err << "the manual's pictures: " << scenes.error() << '\n';
    const QString holder = portHolder();
    if (!holder.isEmpty()) {
        err << "The serial port ttyACM0, which the virtual device needs, is held by " << holder
            << ". Build again when it has ended.\n";
    }
    return 1;
}
