// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/tablemodel.h"

#include <QFile>

cMyTableModel::cMyTableModel(QObject* parent) : QAbstractTableModel(parent) {}

cMyTableModel::cMyTableModel(QList<QStringList> rows, QObject* parent)
    : QAbstractTableModel(parent), m_rows(std::move(rows))
{
    indexValues();
}

cMyTableModel::cMyTableModel(const QString& fileName, QObject* parent) : QAbstractTableModel(parent)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return;
    }
    // All at once: read line by line, the text mode treats the first line unlike the others.
    const QByteArray text = file.readAll();
    QStringList lines = QString::fromLatin1(text.constData(), text.size()).split(QLatin1Char('\n'));
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    for (const QString& line : qAsConst(lines)) {
        m_rows.append(line.split(QLatin1Char(';'), Qt::KeepEmptyParts));
    }
    indexValues();
}

void cMyTableModel::indexValues()
{
    for (int row = 0; row < m_rows.size(); ++row) {
        m_rowOfValue.insert(cell(row, Value), row);
    }
}

int cMyTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int cMyTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || m_rows.isEmpty() ? 0 : static_cast<int>(m_rows.first().size());
}

QVariant cMyTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole || index.row() >= m_rows.size()) {
        return {};
    }
    return cell(index.row(), static_cast<Column>(index.column()));
}

QVariant cMyTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case Label:
        return tr("Nazwa");
    case Value:
        return tr("Wartosc");
    case Factor:
        return tr("Faktor");
    case Unit:
        return tr("Jednostka");
    default:
        return {};
    }
}

Qt::ItemFlags cMyTableModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? QAbstractTableModel::flags(index) : Qt::ItemIsEnabled;
}

QString cMyTableModel::cell(int row, Column column) const
{
    return m_rows.value(row).value(column);
}

double cMyTableModel::number(int row, Column column) const
{
    return cell(row, column).toDouble();
}

int cMyTableModel::rowOfValue(int value) const
{
    return m_rowOfValue.value(QString::number(value), -1);
}
