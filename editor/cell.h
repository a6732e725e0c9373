// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_CELL_H
#define MIOLKA_EDITOR_CELL_H

#include <QColor>
#include <QSize>

class QFontMetrics;
class QPainter;
class QPalette;
class QWidget;

/// The look of inputs that are cells of a table.
namespace editor {

/// Pixels between a cell's edge and its text.
constexpr int cellMargin = 4;

/// The size of a cell for a text of that many pixels.
[[nodiscard]] QSize cellSize(int textWidth, const QFontMetrics& metrics);

/// The fainter one of a palette's text colours: still more than 4.5 to 1 on its background.
[[nodiscard]] QColor quietColor(const QPalette& palette);

/// A palette whose texts are in the usual or, if quiet, the fainter colour. What is disabled keeps
/// its own.
[[nodiscard]] QPalette cellPalette(QPalette palette, bool quiet);

/// A frame around the input if it has the focus or the mouse; else nothing.
void paintCellFrame(QPainter& painter, const QWidget& input, bool isOpen);

} // namespace editor

#endif
