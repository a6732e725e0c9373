// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"

#include <QCoreApplication>
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

} // namespace app
