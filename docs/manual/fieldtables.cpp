// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"
#include "docs/manual/advice.h"
#include "docs/manual/pages.h"
#include "image/filename.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTextStream>
#include <QTranslator>

namespace {

bool write(const QString& path, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

/// Writes what chapters of the manual include about fields and choices to the directory named
/// second, from the tables of the editor and the advice in the file named first. Ends with 1, and
/// says why, if the advice is not complete or a file cannot be read or written.
int main(int argc, char* argv[])
{
    app::prepare();
    const QCoreApplication application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    QTextStream err(stderr);
    constexpr int arguments = 3;
    if (argc != arguments) {
        err << "usage: " << argv[0] << " ADVICE DIRECTORY\n";
        return 2;
    }
    const QString adviceFile = image::decodeFileName(argv[1]);
    const QDir directory(image::decodeFileName(argv[2]));
    QFile source(adviceFile);
    if (!source.open(QIODevice::ReadOnly)) {
        err << adviceFile << ": cannot be read\n";
        return 1;
    }
    const cMyAdvice advice(QString::fromUtf8(source.readAll()));
    const QStringList faults = advice.faults();
    for (const QString& fault : faults) {
        err << adviceFile << ": " << fault << '\n';
    }
    if (!faults.isEmpty()) {
        return 1;
    }
    directory.mkpath(QStringLiteral("."));
    const manual::Pages pages = manual::allPages(advice);
    for (auto page = pages.cbegin(); page != pages.cend(); ++page) {
        if (!write(directory.filePath(page.key()), page.value())) {
            err << directory.filePath(page.key()) << ": cannot be written\n";
            return 1;
        }
    }
    return 0;
}
