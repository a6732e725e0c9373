// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/doublespinboxint.h"

#include "editor/cell.h"
#include "editor/fieldcodec.h"

#include <QLineEdit>
#include <QPainter>

cMyDoubleSpinBoxInt::cMyDoubleSpinBoxInt(QWidget* parent) : QDoubleSpinBox(parent)
{
    connect(this, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &cMyDoubleSpinBoxInt::shownChanged);
    connect(lineEdit(), &QLineEdit::textEdited, this,
            [this] { m_wasTyped = lineEdit()->hasAcceptableInput(); });
    connect(this, &QDoubleSpinBox::editingFinished, this, &cMyDoubleSpinBoxInt::finishTyping);
}

void cMyDoubleSpinBoxInt::setCell(int textWidth)
{
    m_cellSize = editor::cellSize(textWidth, fontMetrics());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    setFrame(false);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setAlignment(Qt::AlignRight);
    updateGeometry();
}

void cMyDoubleSpinBoxInt::setQuiet(bool quiet)
{
    m_isQuiet = quiet;
    colourText();
}

void cMyDoubleSpinBoxInt::showEvent(QShowEvent* event)
{
    QDoubleSpinBox::showEvent(event);
    colourText();
}

void cMyDoubleSpinBoxInt::colourText()
{
    // Under a style sheet the line edit does not inherit colours, and loses its own when it is
    // polished before it is shown.
    if (!m_cellSize.isEmpty()) {
        QPalette colours = editor::cellPalette(palette(), m_isQuiet);
        colours.setColor(QPalette::Base, Qt::transparent);
        lineEdit()->setPalette(colours);
    }
}

QSize cMyDoubleSpinBoxInt::sizeHint() const
{
    return m_cellSize.isEmpty() ? QDoubleSpinBox::sizeHint() : m_cellSize;
}

QSize cMyDoubleSpinBoxInt::minimumSizeHint() const
{
    return m_cellSize.isEmpty() ? QDoubleSpinBox::minimumSizeHint() : m_cellSize;
}

void cMyDoubleSpinBoxInt::paintEvent(QPaintEvent* event)
{
    if (m_cellSize.isEmpty()) {
        QDoubleSpinBox::paintEvent(event);
    } else {
        QPainter painter(this);
        editor::paintCellFrame(painter, *this, false);
    }
}

void cMyDoubleSpinBoxInt::showValue(double value)
{
    setValue(value);
    m_wasTyped = false;
}

QVector<quint8> cMyDoubleSpinBoxInt::storedAs() const
{
    return m_binding.dataToFile(value() * m_faktor);
}

void cMyDoubleSpinBoxInt::mySetFaktor(double newFaktor)
{
    m_faktor = newFaktor;
    setDecimals(editor::decimalsOfFactor(newFaktor).value_or(decimals()));
    updateValue(value());
}

void cMyDoubleSpinBoxInt::mySetUnit(const QString& newUnit)
{
    setSuffix(QLatin1Char(' ') + newUnit);
    setValue(0.0);
}

void cMyDoubleSpinBoxInt::mySetRange(double newMin, double newMax)
{
    setRange(newMin, newMax);
    setEnabled(newMin != 0 || newMax != 0);
}

void cMyDoubleSpinBoxInt::updateValue(double value)
{
    emit valueChanged(m_binding.filePosition(), m_binding.dataToFile(value * m_faktor));
}

void cMyDoubleSpinBoxInt::shownChanged(double value)
{
    // Return tells of a change in any case. What is shown may stand for another stored number,
    // which nobody has edited then.
    if (value != m_shown) {
        m_shown = value;
        updateValue(value);
    }
}

void cMyDoubleSpinBoxInt::finishTyping()
{
    // A stored number that is out of range, or between two that can be shown, is shown as another.
    // Typing that one changes no shown number, but it is what the user wants stored.
    if (m_wasTyped && m_binding.differsFrom(storedAs())) {
        updateValue(value());
    }
    m_wasTyped = false;
}
