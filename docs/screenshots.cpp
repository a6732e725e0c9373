// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"
#include "app/startup.h"
#include "image/filename.h"

#include <QApplication>
#include <QDir>
#include <QTabWidget>
#include <QTextStream>
#include <QTranslator>

/// Renders every page of the main window to a PNG in the directory named first; opens the settings
/// file named second, if any. Ends with 1 if a picture could not be written.
int main(int argc, char* argv[])
{
    app::prepare();
    QApplication application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    QTextStream out(stdout);
    if (argc < 2) {
        out << "usage: " << argv[0] << " DIRECTORY [FILE]\n";
        return 2;
    }
    const QDir directory(image::decodeFileName(argv[1]));
    directory.mkpath(QStringLiteral("."));

    MainWindow window;
    if (argc >= 3) {
        window.openFileCmdLine(image::decodeFileName(argv[2]));
    }
    window.show();
    auto* pages = window.findChild<QTabWidget*>(QStringLiteral("tabWidget"));
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        QCoreApplication::processEvents();
        const QString path = directory.absoluteFilePath(
            QStringLiteral("%1-%2.png").arg(page).arg(pages->currentWidget()->objectName()));
        if (!window.grab().save(path)) {
            out << "cannot write " << path << '\n';
            return 1;
        }
        out << path << '\n';
    }
    return 0;
}
