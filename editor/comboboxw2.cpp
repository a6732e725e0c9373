// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/comboboxw2.h"

#include "editor/tablemodel.h"

cMyComboBoxW2::cMyComboBoxW2(QWidget* parent) : cMyOptionBox(parent)
{
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &cMyComboBoxW2::indexChanged);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &cMyComboBoxW2::chosen);
}

void cMyComboBoxW2::showValue(int value)
{
    const auto* table = qobject_cast<const cMyTableModel*>(model());
    const int row = table == nullptr ? -1 : table->rowOfValue(value);
    if (row >= 0) {
        setCurrentIndex(row);
    }
}

void cMyComboBoxW2::indexChanged(int newIndex)
{
    if (newIndex >= 0) {
        emit valueChanged(m_binding.filePosition(), storedAs(newIndex));
    }
}

QVector<quint8> cMyComboBoxW2::storedAs(int row) const
{
    const QVariant cell = model()->index(row, cMyTableModel::Value).data();
    return m_binding.dataToFile(static_cast<quint16>(cell.toUInt()));
}

void cMyComboBoxW2::chosen(int row)
{
    // The choice that is shown may stand over a stored number that no choice has. Picking it
    // changes no index, but it is what the user wants stored.
    if (m_binding.differsFrom(storedAs(row))) {
        indexChanged(row);
    }
}
