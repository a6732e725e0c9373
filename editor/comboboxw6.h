// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_COMBOBOXW6_H
#define MIOLKA_EDITOR_COMBOBOXW6_H

#include "editor/comboboxw2.h"

/// The choice of a measured value, which also says in what factor, unit and range the number that
/// it is compared with is shown.
class cMyComboBoxW6 : public cMyComboBoxW2
{
    Q_OBJECT

public:
    explicit cMyComboBoxW6(QWidget* parent = nullptr);

signals:
    /// Stored units for each displayed unit.
    void faktorChanged(double newFaktor);

    /// The unit with its brackets.
    void unitChanged(QString newUnit);

    /// In displayed units; both are 0 if nothing is compared.
    void rangeChanged(double newMin, double newMax);

public slots:
    /// Tells what the choice is stored as, then factor, unit and range.
    void indexChanged(int newIndex) override;
};

#endif
