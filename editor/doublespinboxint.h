// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_DOUBLESPINBOXINT_H
#define MIOLKA_EDITOR_DOUBLESPINBOXINT_H

#include "editor/fileposition.h"

#include <QDoubleSpinBox>

/// A number that is stored as an integer: the shown number times a factor.
class cMyDoubleSpinBoxInt : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit cMyDoubleSpinBoxInt(QWidget* parent = nullptr);

    /// Where the number is stored.
    [[nodiscard]] cMyFilePosition& binding() { return m_binding; }

    /// Stored units for each displayed unit.
    [[nodiscard]] double faktor() const { return m_faktor; }

    /// Makes it look like a cell of a table, with room for a text of that many pixels.
    void setCell(int textWidth);

    /// Shows its text in a cell's usual or, if quiet, its fainter colour.
    void setQuiet(bool quiet);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Shows a number that was read.
    void showValue(double value);

    /// What the number that is shown is stored as.
    [[nodiscard]] QVector<quint8> storedAs() const;

signals:
    /// The bytes at this address are now these.
    void valueChanged(quint32 address, QVector<quint8> newValue);

public slots:
    /// Sets the factor and the decimals that suit it, and stores what is shown in the new units.
    void mySetFaktor(double newFaktor);

    /// Sets the unit, with its brackets, and goes back to 0, also if the unit stays the same.
    void mySetUnit(const QString& newUnit);

    /// Sets the range in displayed units. From 0 to 0 there is nothing to enter.
    void mySetRange(double newMin, double newMax);

    /// Tells what a shown number is stored as.
    void updateValue(double value);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void shownChanged(double value);
    void finishTyping();
    void colourText();

    cMyFilePosition m_binding;
    double m_faktor = 1;
    double m_shown = 0;
    bool m_wasTyped = false;
    bool m_isQuiet = false;
    QSize m_cellSize; ///< empty unless it is a cell
};

#endif
