// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/filename.h"

#include <QFileInfo>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr QChar loneSurrogate = QChar(0xDC80);

/// Takes and gives names as bytes, with slashes between them. Qt's own paths turn what is not valid
/// UTF-8 into replacement characters, and clean ".." out of a link's target before the links on its
/// way are followed.
fs::path toNative(const QString& path)
{
    return fs::u8path(path.toStdString());
}

QString fromNative(const fs::path& path)
{
    return image::decodeFileName(QByteArray::fromStdString(path.generic_u8string()));
}

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
    if (!isEncodable(path) ||
        (path.contains(QChar::ReplacementCharacter) && !QFileInfo::exists(path))) {
        return true;
    }
    std::error_code error;
    return !path.isEmpty() && !isEncodable(fromNative(fs::absolute(toNative(path), error)));
}

bool isRegularFile(const QString& path)
{
    return isEncodable(path) && QFileInfo(path).isFile();
}

QString writeTarget(const QString& path)
{
    if (path.isEmpty() || !isEncodable(path)) {
        return {};
    }
    constexpr int mostLinks = 40;
    std::error_code error;
    fs::path target = fs::absolute(toNative(path), error);
    for (int links = 0; !error && links < mostLinks; ++links) {
        if (fs::is_symlink(fs::symlink_status(target, error)) && !fs::exists(target, error)) {
            target = target.parent_path() / fs::read_symlink(target, error);
            continue;
        }
        error.clear();
        target = fs::exists(target, error)
                     ? fs::canonical(target, error)
                     : fs::canonical(target.parent_path(), error) / target.filename();
        const QString name = fromNative(target);
        return error || !isEncodable(name) ? QString() : name;
    }
    return {};
}

} // namespace image
