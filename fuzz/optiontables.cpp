// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldcodec.h"
#include "editor/tablemodel.h"
#include "fuzz/support.h"

#include <QStringList>

#include <cmath>

using fuzz::expect;

namespace {

/// The rows of a table, as a text file is read: the carriage returns are none of it.
QList<QStringList> modelOf(QByteArray text)
{
    QList<QStringList> rows;
    QByteArrayList lines = text.replace('\r', QByteArray()).split('\n');
    if (lines.constLast().isEmpty()) {
        lines.removeLast();
    }
    for (const QByteArray& line : qAsConst(lines)) {
        rows.append(fuzz::latin1(line).split(QLatin1Char(';')));
    }
    return rows;
}

void checkRow(const cMyTableModel& table, int row, const QStringList& cells)
{
    for (int column = 0; column <= cells.size(); ++column) {
        const QString text = cells.value(column);
        const auto place = static_cast<cMyTableModel::Column>(column);
        expect(table.cell(row, place) == text, "a cell holds its text");
        const QModelIndex index = table.index(row, column);
        expect(!index.isValid() || index.data().toString() == text, "a cell shows its text");
    }
    bool isNumber = false;
    const int value = cells.value(cMyTableModel::Value).toInt(&isNumber);
    if (isNumber && QString::number(value) == cells.at(cMyTableModel::Value)) {
        const int found = table.rowOfValue(value);
        expect(found >= row && table.cell(found, cMyTableModel::Value) == QString::number(value),
               "a value is found in the last row that has it");
    }
}

/// What is made of a row's factor and range, whatever they are.
void checkScale(const cMyTableModel& table, int row)
{
    const cMyThresholdScale scale = editor::thresholdScale(table, row);
    expect(!std::isnan(editor::shownThreshold(1, scale)) || std::isnan(scale.factor),
           "a threshold is a number");
    const auto decimals = editor::decimalsOfFactor(scale.factor);
    expect(!decimals || (*decimals >= 0 && *decimals <= 2), "there are two decimals at most");
    expect(editor::plainUnit(scale.unit).size() <= scale.unit.size(), "a unit does not grow");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const fuzz::InputFile file;
    static const QString path = file.path();
    file.fill(bytes, size);
    const cMyTableModel table(path);
    const QList<QStringList> rows = modelOf(fuzz::bytesOf(bytes, size));
    expect(table.getList() == rows && table.rowCount() == rows.size(), "a line is a row");
    expect(table.columnCount() == (rows.isEmpty() ? 0 : rows.first().size()),
           "a table is as wide as its first row");
    for (int row = 0; row < rows.size(); ++row) {
        checkRow(table, row, rows.at(row));
        checkScale(table, row);
    }
    checkScale(table, -1);
    expect(table.cell(rows.size(), cMyTableModel::Label).isEmpty(),
           "there is nothing behind the end");
    return 0;
}
