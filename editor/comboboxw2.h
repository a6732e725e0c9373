// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_COMBOBOXW2_H
#define MIOLKA_EDITOR_COMBOBOXW2_H

#include "editor/fileposition.h"
#include "editor/optionbox.h"

/// A choice that is stored as a number: the value that its option table gives it.
class cMyComboBoxW2 : public cMyOptionBox
{
    Q_OBJECT

public:
    explicit cMyComboBoxW2(QWidget* parent = nullptr);

    /// Where the choice is stored.
    [[nodiscard]] cMyFilePosition& binding() { return m_binding; }

    /// Selects the choice that is stored as this number; the selection stays if there is none.
    void showValue(int value);

signals:
    /// The bytes at this address are now these.
    void valueChanged(quint32 newAddress, QVector<quint8> values);

public slots:
    /// Tells what the choice in this row is stored as.
    virtual void indexChanged(int newIndex);

private:
    [[nodiscard]] QVector<quint8> storedAs(int row) const;
    void chosen(int row);

    cMyFilePosition m_binding;
};

#endif
