// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_TABLEMODEL_H
#define MIOLKA_EDITOR_TABLEMODEL_H

#include <QAbstractTableModel>
#include <QHash>
#include <QStringList>

/// The choices that a field offers: label, stored value and, for measured values, the factor,
/// unit, minimum and maximum of the number that is compared with them. Read-only.
class cMyTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Columns by position; tables of plain choices have the first two only.
    enum Column : int { Label, Value, Factor, Unit, Minimum, Maximum };

    explicit cMyTableModel(QObject* parent = nullptr);

    /// Of these rows: label and value first, as in Column.
    explicit cMyTableModel(QList<QStringList> rows, QObject* parent = nullptr);

    /// Loads a table: Latin-1 text, a row on each line, cells separated by ";". Stays empty if
    /// the file cannot be opened.
    explicit cMyTableModel(const QString& fileName, QObject* parent = nullptr);

    /// What Qt asks of a model. A choice is one row; headers are those of the columns.
    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// A copy of the rows.
    [[nodiscard]] QList<QStringList> getList() const { return m_rows; }

    /// The text of a cell; empty if there is none.
    [[nodiscard]] QString cell(int row, Column column) const;

    /// The number in a cell; 0 if it holds none.
    [[nodiscard]] double number(int row, Column column) const;

    /// The last row whose value reads as this number in decimal; -1 if there is none.
    [[nodiscard]] int rowOfValue(int value) const;

private:
    void indexValues();

    QList<QStringList> m_rows;
    QHash<QString, int> m_rowOfValue;
};

#endif
