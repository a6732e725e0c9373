// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/comboboxw6.h"

#include "editor/tablemodel.h"

cMyComboBoxW6::cMyComboBoxW6(QWidget* parent) : cMyComboBoxW2(parent) {}

void cMyComboBoxW6::indexChanged(int newIndex)
{
    if (newIndex < 0) {
        return;
    }
    cMyComboBoxW2::indexChanged(newIndex);
    const auto cell = [this, newIndex](cMyTableModel::Column column) {
        return model()->index(newIndex, column).data();
    };
    emit faktorChanged(cell(cMyTableModel::Factor).toDouble());
    emit unitChanged(cell(cMyTableModel::Unit).toString());
    emit rangeChanged(cell(cMyTableModel::Minimum).toDouble(),
                      cell(cMyTableModel::Maximum).toDouble());
}
