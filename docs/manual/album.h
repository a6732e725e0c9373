// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_ALBUM_H
#define MIOLKA_DOCS_MANUAL_ALBUM_H

#include <QDir>
#include <QPixmap>
#include <QRect>

class QWidget;

/// Puts pictures of widgets in a directory, as PNG files.
class cMyAlbum
{
public:
    explicit cMyAlbum(const QDir& directory);

    /// These return false if the file cannot be written. A name has no ending.
    [[nodiscard]] bool add(const QString& name, const QPixmap& picture) const;

    /// A dialog with a frame and its title around it, as a desktop would draw them: the pictures
    /// are taken where there is none.
    [[nodiscard]] bool addDialog(const QString& name, QWidget& dialog) const;

private:
    QDir m_directory;
};

namespace manual {

/// What a widget shows in a part of it, with what lies behind it in its window.
[[nodiscard]] QPixmap pictureOf(QWidget& widget, const QRect& part);

/// The same of all of it.
[[nodiscard]] QPixmap pictureOf(QWidget& widget);

/// Pictures below each other.
[[nodiscard]] QPixmap stacked(const QVector<QPixmap>& pictures);

/// A picture with a smaller one over it, its upper left corner there.
[[nodiscard]] QPixmap overlaid(QPixmap picture, const QPixmap& over, const QPoint& place);

} // namespace manual

#endif
