// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"
#include "app/startup.h"
#include "image/arguments.h"

#include <QApplication>
#include <QTranslator>

int main(int argc, char* argv[])
{
    app::prepare();
    QApplication application(argc, argv);
    app::introduce();
    QTranslator translator;
    app::installCatalogue(translator);
    MainWindow window;
    const QStringList arguments = image::decodedArguments(argc, argv);
    if (arguments.size() >= 2) {
        window.openFileCmdLine(arguments.at(1));
    }
    window.show();
    return QApplication::exec();
}
