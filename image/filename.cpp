// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/filename.h"

#include <QFileInfo>

namespace {

constexpr QChar loneSurrogate = QChar(0xDC80);

} // namespace

namespace image {

QString decodeFileName(const QByteArray& utf8)
{
    // The character in front keeps a leading byte-order mark, which is dropped at the start only.
    const QByteArray guarded = '/' + utf8;
    QString text = QString::fromUtf8(guarded);
    if (text.toUtf8() != guarded) {
        text.replace(QChar::ReplacementCharacter, loneSurrogate);
    }
    return text.mid(1);
}

bool isEncodable(const QString& path)
{
    return !path.contains(QChar::Null) && path.isValidUtf16();
}

bool isMangled(const QString& path)
{
    return !isEncodable(path) ||
           (path.contains(QChar::ReplacementCharacter) && !QFileInfo::exists(path));
}

} // namespace image
