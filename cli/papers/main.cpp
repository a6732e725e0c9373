// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"
#include "cli/papers/completions.h"
#include "cli/papers/manpage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

struct Paper
{
    const char* kind;
    QString (*write)(const QVector<cMyCommand>& commands);
};

const QVector<Paper>& papersByKind()
{
    static const QVector<Paper> all = {{"man", papers::manPage},
                                       {"bash", papers::bashCompletion},
                                       {"zsh", papers::zshCompletion},
                                       {"fish", papers::fishCompletion}};
    return all;
}

int write(const QByteArray& text, const QString& path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush()) {
        return 0;
    }
    std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
    return 1;
}

} // namespace

/// Writes what goes with the program, made from its command table: miolkactl-papers KIND OUTFILE.
int main(int argc, char* argv[])
{
    constexpr int argumentCount = 3;
    if (argc == argumentCount) {
        for (const Paper& paper : papersByKind()) {
            if (qstrcmp(paper.kind, argv[1]) == 0) {
                return write(paper.write(cli::commands()).toUtf8(), QFile::decodeName(argv[2]));
            }
        }
    }
    std::fputs("usage: miolkactl-papers man|bash|zsh|fish OUTFILE\n", stderr);
    return 2;
}
