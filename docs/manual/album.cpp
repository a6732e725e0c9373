// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/album.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace {

constexpr int titleHeight = 28; // as all numbers here, in pixels of an ordinary screen
constexpr int cornerRadius = 6;

QPixmap emptyPicture(const QSize& size, qreal ratio)
{
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    return picture;
}

QSize sizeOf(const QPixmap& picture)
{
    return picture.size() / picture.devicePixelRatio();
}

} // namespace

cMyAlbum::cMyAlbum(const QDir& directory) : m_directory(directory) {}

bool cMyAlbum::add(const QString& name, const QPixmap& picture) const
{
    constexpr int bestCompression = 0; // as Qt counts: the lower the smaller the file
    return picture.save(m_directory.filePath(name + QStringLiteral(".png")), "PNG",
                        bestCompression);
}

bool cMyAlbum::addDialog(const QString& name, QWidget& dialog) const
{
    const QPixmap inside = manual::pictureOf(dialog);
    const QSize size = sizeOf(inside) + QSize(2, titleHeight + 1);
    QPixmap framed = emptyPicture(size, inside.devicePixelRatio());
    QPainter painter(&framed);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette palette = dialog.palette();
    const QRectF outline(0.5, 0.5, size.width() - 1, size.height() - 1); // lines lie between pixels
    painter.setPen(palette.color(QPalette::Mid));
    painter.setBrush(palette.color(QPalette::Midlight));
    painter.drawRoundedRect(outline, cornerRadius, cornerRadius);
    painter.setPen(palette.color(QPalette::WindowText));
    QFont font = dialog.font();
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRect(0, 0, size.width(), titleHeight), Qt::AlignCenter, dialog.windowTitle());
    painter.drawPixmap(1, titleHeight, inside);
    painter.end();
    return add(name, framed);
}

namespace manual {

QPixmap pictureOf(QWidget& widget, const QRect& part)
{
    QWidget* window = widget.window();
    if (window == &widget) {
        return widget.grab(part);
    }
    // By itself a panel has nothing behind it where it is not quite opaque.
    QPixmap picture = widget.grab(part);
    QPixmap filled = emptyPicture(sizeOf(picture), picture.devicePixelRatio());
    filled.fill(window->palette().color(QPalette::Window));
    return overlaid(filled, picture, {});
}

QPixmap pictureOf(QWidget& widget)
{
    return pictureOf(widget, widget.rect());
}

QPixmap stacked(const QVector<QPixmap>& pictures)
{
    QSize size(0, 0);
    for (const QPixmap& each : pictures) {
        size = QSize(std::max(size.width(), sizeOf(each).width()),
                     size.height() + sizeOf(each).height());
    }
    QPixmap picture = emptyPicture(size, pictures.first().devicePixelRatio());
    int top = 0;
    for (const QPixmap& each : pictures) {
        picture = overlaid(picture, each, {0, top});
        top += sizeOf(each).height();
    }
    return picture;
}

QPixmap overlaid(QPixmap picture, const QPixmap& over, const QPoint& place)
{
    QPainter painter(&picture);
    painter.drawPixmap(place, over);
    return picture;
}

} // namespace manual
