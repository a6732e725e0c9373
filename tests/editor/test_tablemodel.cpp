// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/tablemodel.h"

#include "tests/support/posix.h"

#include <QTemporaryDir>
#include <QtTest>

/// The option tables' model.
class TestTableModel : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyModel();
    void rowsThatAreGiven();
    void emptyCellsAreKept();
    void aFileIsReadAsLatin1();
    void anyLineEnd();
    void everyRowIsReadAlike();
    void aFileThatIsMissing();
    void headers();
    void cellsThatAreNoNumbers();
    void onlyTheDisplayRole();
    void isReadOnly();
    void theLastOfEqualValuesWins();
    void rowsHaveNoChildren();

private:
    [[nodiscard]] QString write(const QByteArray& contents) const;

    QTemporaryDir m_directory;
};

namespace {

const QList<QStringList> twoRows{{QStringLiteral("Min"), QStringLiteral("1")},
                                 {QStringLiteral("Avg"), QStringLiteral("2")}};

} // namespace

QString TestTableModel::write(const QByteArray& contents) const
{
    QString path = m_directory.filePath(QStringLiteral("table.csv"));
    support::writeFile(path, contents);
    return path;
}

void TestTableModel::anEmptyModel()
{
    const cMyTableModel model;
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 0);
    QVERIFY(model.getList().isEmpty());
    QCOMPARE(model.rowOfValue(0), -1);
}

void TestTableModel::rowsThatAreGiven()
{
    const cMyTableModel model(twoRows);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.getList(), twoRows);
    QCOMPARE(model.index(1, 0).data().toString(), QStringLiteral("Avg"));
    QCOMPARE(model.index(1, 1).data().toString(), QStringLiteral("2"));
}

void TestTableModel::emptyCellsAreKept()
{
    const cMyTableModel model(write("Regardless of any value;255;1;;;\r\n"));
    QCOMPARE(model.columnCount(), 6);
    QCOMPARE(model.getList().first().size(), 6);
    QCOMPARE(model.cell(0, cMyTableModel::Unit), QString());
    QCOMPARE(model.number(0, cMyTableModel::Maximum), 0.0);
}

void TestTableModel::aFileIsReadAsLatin1()
{
    const cMyTableModel model(write("Temperature;16;10;[\xB0"
                                    "C];-50;100\r\n"));
    QCOMPARE(model.cell(0, cMyTableModel::Unit), QString::fromUtf8("[°C]"));
    QCOMPARE(model.number(0, cMyTableModel::Minimum), -50.0);
}

void TestTableModel::anyLineEnd()
{
    const cMyTableModel model(write("a;1\r\nb;2\n;\r\nc;3"));
    const QList<QStringList> rows{{QStringLiteral("a"), QStringLiteral("1")},
                                  {QStringLiteral("b"), QStringLiteral("2")},
                                  {QString(), QString()},
                                  {QStringLiteral("c"), QStringLiteral("3")}};
    QCOMPARE(model.getList(), rows);
}

void TestTableModel::everyRowIsReadAlike()
{
    const QByteArray odd("a\rb\0c;1\r\r\n", 10);
    const QStringList row = {QStringLiteral("ab") + QChar(QChar::Null) + QLatin1Char('c'),
                             QStringLiteral("1")};
    const cMyTableModel model(write(odd + odd + odd));
    QCOMPARE(model.getList(), QList<QStringList>({row, row, row}));
}

void TestTableModel::aFileThatIsMissing()
{
    const cMyTableModel model(QStringLiteral(":/models/none.csv"));
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 0);
}

void TestTableModel::headers()
{
    const cMyTableModel model(twoRows);
    const QStringList names{QStringLiteral("Nazwa"), QStringLiteral("Wartosc"),
                            QStringLiteral("Faktor"), QStringLiteral("Jednostka")};
    for (int section = 0; section < 4; ++section) {
        QCOMPARE(model.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString(),
                 names.at(section));
        QVERIFY(!model.headerData(section, Qt::Vertical, Qt::DisplayRole).isValid());
        QVERIFY(!model.headerData(section, Qt::Horizontal, Qt::ToolTipRole).isValid());
    }
    for (const int section : {-1, 4, 5, 6}) {
        QVERIFY(!model.headerData(section, Qt::Horizontal, Qt::DisplayRole).isValid());
    }
}

void TestTableModel::cellsThatAreNoNumbers()
{
    const cMyTableModel model(write("x;y;z\r\n"));
    QCOMPARE(model.number(0, cMyTableModel::Value), 0.0);
    QCOMPARE(model.number(0, cMyTableModel::Maximum), 0.0);
    QCOMPARE(model.number(7, cMyTableModel::Value), 0.0);
}

void TestTableModel::onlyTheDisplayRole()
{
    const cMyTableModel model(twoRows);
    QVERIFY(!model.data(model.index(0, 0), Qt::EditRole).isValid());
    QVERIFY(!model.data(QModelIndex(), Qt::DisplayRole).isValid());
    const cMyTableModel longer(twoRows + twoRows);
    QVERIFY(!model.data(longer.index(2, 0), Qt::DisplayRole).isValid());
}

void TestTableModel::isReadOnly()
{
    cMyTableModel model(twoRows);
    QCOMPARE(model.flags(QModelIndex()), Qt::ItemFlags(Qt::ItemIsEnabled));
    QVERIFY(!model.flags(model.index(0, 0)).testFlag(Qt::ItemIsEditable));
    QVERIFY(!model.setData(model.index(0, 0), QStringLiteral("Max")));
    QCOMPARE(model.getList(), twoRows);
}

void TestTableModel::theLastOfEqualValuesWins()
{
    const cMyTableModel model(write("a;1\r\nb;2\r\nc;1\r\nd;01\r\n"));
    QCOMPARE(model.rowOfValue(1), 2);
    QCOMPARE(model.rowOfValue(2), 1);
    QCOMPARE(model.rowOfValue(3), -1);
}

void TestTableModel::rowsHaveNoChildren()
{
    const cMyTableModel model(twoRows);
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
}

QTEST_GUILESS_MAIN(TestTableModel)
#include "test_tablemodel.moc"
