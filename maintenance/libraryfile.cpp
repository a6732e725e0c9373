// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/libraryfile.h"

#include "image/filename.h"
#include "image/hexcodec.h"
#include "image/wordreader.h"

#include <QFile>

namespace maintenance {

cMyLibrary readLibraryFile(const QString& path)
{
    QFile file(path);
    if (!image::isRegularFile(path) || !file.open(QIODevice::ReadOnly)) {
        return {LibraryFault::Unreadable, {}};
    }
    if (file.size() > largestLibraryFile) {
        return {LibraryFault::TooLarge, {}};
    }
    cMyLibrary library;
    cMyWordReader words(file);
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        if (library.lines.size() == mostLibraryLines) {
            return {LibraryFault::TooLarge, {}};
        }
        library.lines.append(QString::fromLatin1(word.data(), static_cast<int>(word.size())));
        if (word == image::endOfFileRecord) {
            break;
        }
    }
    if (file.error() != QFileDevice::NoError) {
        return {LibraryFault::Unreadable, {}};
    }
    return library;
}

} // namespace maintenance
