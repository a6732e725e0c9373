// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"

#include <QApplication>
#include <QIcon>
#include <QTextCodec>
#include <QTranslator>

namespace app {

void prepare()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#ifdef Q_OS_UNIX
    // In the C locale every letter outside ASCII would become a question mark in the file name
    // that is opened or, worse, written.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

void installCatalogue(QTranslator& translator)
{
    translator.load(QStringLiteral(":/language/english.qm"));
    QCoreApplication::installTranslator(&translator);
}

void introduce()
{
    QGuiApplication::setDesktopFileName(QStringLiteral(MIOLKA_APPLICATION_ID));
    // Desktops know the icon by the name above. This one is for window managers that know no names,
    // and embedded: an icon theme would be searched, and each of its sizes decoded, at every start.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/ikony/miolka_soft_128.png")));
}

} // namespace app
