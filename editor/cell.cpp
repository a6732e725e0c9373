// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/cell.h"

#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

namespace editor {

QSize cellSize(int textWidth, const QFontMetrics& metrics)
{
    constexpr int verticalMargin = 3;
    return {textWidth + 2 * cellMargin, metrics.height() + 2 * verticalMargin};
}

QColor quietColor(const QPalette& palette)
{
    // Two thirds text, one third background.
    const QColor& text = palette.color(QPalette::Active, QPalette::Text);
    const QColor& base = palette.color(QPalette::Active, QPalette::Base);
    return {(2 * text.red() + base.red()) / 3, (2 * text.green() + base.green()) / 3,
            (2 * text.blue() + base.blue()) / 3};
}

QPalette cellPalette(QPalette palette, bool quiet)
{
    const QColor usual = palette.color(QPalette::Active, QPalette::Text);
    const QColor faint = quietColor(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Text, quiet ? faint : usual);
        palette.setColor(group, QPalette::WindowText, quiet ? faint : usual);
    }
    if (palette.color(QPalette::Disabled, QPalette::Text) == usual) {
        palette.setColor(QPalette::Disabled, QPalette::Text, faint); // palettes that do not tell
    }
    return palette;
}

void paintCellFrame(QPainter& painter, const QWidget& input, bool isOpen)
{
    const bool isInUse = input.hasFocus() || isOpen;
    if (!isInUse && !(input.isEnabled() && input.underMouse())) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(input.palette().color(isInUse ? QPalette::Highlight : QPalette::Mid));
    constexpr double half = 0.5; // lines of a pixel lie between coordinates
    constexpr double corner = 3;
    painter.drawRoundedRect(QRectF(input.rect()).adjusted(half, half, -half, -half), corner,
                            corner);
    painter.restore();
}

} // namespace editor
