// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/developer/settingsimage.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QTranslator>

#include <cstdio>

/// Writes the page about the settings image: miolka-settings-image CATALOGUE OUTFILE. The catalogue
/// is the English one, compiled.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    constexpr int argumentCount = 3;
    if (argc != argumentCount) {
        std::fputs("usage: miolka-settings-image CATALOGUE OUTFILE\n", stderr);
        return 2;
    }
    QTranslator translator;
    if (!translator.load(QFile::decodeName(argv[1])) ||
        !QCoreApplication::installTranslator(&translator)) {
        std::fprintf(stderr, "%s: is no catalogue\n", argv[1]);
        return 1;
    }
    const QByteArray text = developer::settingsImagePage().toUtf8();
    QSaveFile file(QFile::decodeName(argv[2]));
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()) {
        return 0;
    }
    std::fprintf(stderr, "%s: %s\n", argv[2], qPrintable(file.errorString()));
    return 1;
}
