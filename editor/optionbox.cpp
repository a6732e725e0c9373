// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/optionbox.h"

#include "editor/cell.h"
#include "editor/shortlabels.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStylePainter>
#include <QToolTip>

namespace {

using editor::cellMargin;

constexpr int arrowSize = 8; // pixels

/// Styles keep what they have drawn by the palette's key: boxes that look alike share one palette,
/// or each would have an arrow of its own drawn and kept.
const QPalette& arrowPalette(const QPalette& boxPalette)
{
    static QPalette shared;
    QPalette palette = boxPalette;
    palette.setColor(QPalette::ButtonText, editor::quietColor(boxPalette));
    if (shared != palette) {
        shared = palette;
    }
    return shared;
}

} // namespace

cMyOptionBox::cMyOptionBox(QWidget* parent) : QComboBox(parent) {}

void cMyOptionBox::setCell(std::shared_ptr<cMyShortLabels> labels, int leastWidth)
{
    m_labels = std::move(labels);
    m_leastWidth = leastWidth;
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    updateGeometry();
}

void cMyOptionBox::setQuiet(bool quiet)
{
    if (m_isQuiet != quiet) {
        m_isQuiet = quiet;
        update();
    }
}

QRect cMyOptionBox::cellTextRect() const
{
    return rect().adjusted(cellMargin, 0, -cellMargin, 0);
}

QSize cMyOptionBox::sizeHint() const
{
    return m_labels == nullptr ? QComboBox::sizeHint()
                               : editor::cellSize(m_labels->fullWidth(), fontMetrics());
}

QSize cMyOptionBox::minimumSizeHint() const
{
    return m_labels == nullptr ? QComboBox::minimumSizeHint()
                               : editor::cellSize(m_leastWidth, fontMetrics());
}

void cMyOptionBox::showPopup()
{
    const QFontMetrics metrics = view()->fontMetrics();
    int longest = 0;
    for (int row = 0; row < count(); ++row) {
        // Styles that show the list as a menu double every "&", and shorten a text as if it were
        // that long.
        const QString text = itemText(row).replace(QLatin1String("&"), QLatin1String("&&"));
        longest = qMax(longest, metrics.horizontalAdvance(text));
    }
    const int padding = 2 * metrics.height() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    view()->setMinimumWidth(longest + padding);
    QComboBox::showPopup();
}

void cMyOptionBox::paintEvent(QPaintEvent* event)
{
    if (m_labels == nullptr) {
        QComboBox::paintEvent(event);
    } else {
        paintCell();
    }
}

void cMyOptionBox::paintCell()
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    editor::paintCellFrame(painter, *this, option.state.testFlag(QStyle::State_On));
    const QRect textRect = cellTextRect();
    const QString text = m_labels->label(currentIndex(), textRect.width());
    const int advance = m_labels->advance(currentIndex(), textRect.width());
    if (advance + cellMargin + arrowSize <= textRect.width()) {
        paintArrow(painter, textRect, option);
    }
    const auto colours = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(m_isQuiet && isEnabled() ? editor::quietColor(palette())
                                            : palette().color(colours, QPalette::Text));
    painter.drawText(textRect, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading), text);
}

void cMyOptionBox::paintArrow(QStylePainter& painter, const QRect& within,
                              const QStyleOption& option)
{
    QStyleOption arrow(option);
    arrow.rect =
        QRect(within.right() + 1 - arrowSize, (height() - arrowSize) / 2, arrowSize, arrowSize);
    arrow.rect = QStyle::visualRect(layoutDirection(), rect(), arrow.rect);
    arrow.palette = arrowPalette(palette());
    painter.drawPrimitive(QStyle::PE_IndicatorArrowDown, arrow);
}

QString cMyOptionBox::toolTipText() const
{
    // Marked up, or the escapes would be shown.
    return QStringLiteral("<span>%1</span>").arg(currentText().toHtmlEscaped());
}

bool cMyOptionBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && m_labels != nullptr &&
        fontMetrics().horizontalAdvance(currentText()) > cellTextRect().width()) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), toolTipText(), this);
        return true;
    }
    return QComboBox::event(event);
}
