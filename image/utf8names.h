// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_UTF8NAMES_H
#define MIOLKA_IMAGE_UTF8NAMES_H

#include <QtGlobal>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <QByteArray>
#include <QString>
#endif

/// The one place that knows two versions of Qt apart.
namespace image {

/// Lets file names, arguments and what is printed be UTF-8, whatever the locale says. In the C
/// locale every letter outside ASCII would become a question mark in the file name that is opened
/// or, worse, written. Call before the application object is made.
inline void useUtf8Names()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#else
    // Qt does it by itself, but says so where users read what their files and devices have.
    static QtMessageHandler handle = nullptr;
    if (handle != nullptr) {
        return;
    }
    handle = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            if (!text.startsWith(QLatin1String("Detected locale "))) {
                handle(type, context, text);
            }
        });
#endif
}

} // namespace image

#endif
