// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldcodec.h"
#include "editor/tablemodel.h"
#include "tests/editor/expectedtables.h"
#include "tests/support/posix.h"

#include <QSet>
#include <QtTest>

/// The option tables that are embedded.
class TestOptionTables : public QObject
{
    Q_OBJECT

private slots:
    void everyCell_data();
    void everyCell();
    void everyFieldsTableIsThere();
    void everyOptionCanBeEncoded();
    void labelsAndValuesAreUnique();
    void thresholdsStayInsideTheirField();
};

namespace {

QList<QStringList> rowsOf(const QStringList& lines)
{
    QList<QStringList> rows;
    for (const QString& line : lines) {
        rows.append(line.split(QLatin1Char(';')));
    }
    return rows;
}

QStringList linesOf(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'));
}

/// A message repeats the label and value of what it can speak.
QStringList messageLines()
{
    QStringList lines;
    for (const QStringList& row : rowsOf(linesOf(expected::measuredValue).mid(1))) {
        lines.append(row.mid(0, 2).join(QLatin1Char(';')));
    }
    return lines + linesOf(expected::messageAfterValues);
}

QString resource(const QString& table)
{
    return QStringLiteral(":/models/%1.csv").arg(table);
}

} // namespace

void TestOptionTables::everyCell_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("rows");
    QTest::newRow("parCb1") << linesOf(expected::parCb1) << 6;
    QTest::newRow("parCb2") << linesOf(expected::parCb2) << 7;
    QTest::newRow("parCb3") << linesOf(expected::parCb3) << 4;
    QTest::newRow("parCb4") << linesOf(expected::parCb4) << 4;
    QTest::newRow("timCb1") << linesOf(expected::condition) << 25;
    QTest::newRow("msgCb1") << linesOf(expected::condition) << 25;
    QTest::newRow("timCb2") << linesOf(expected::measuredValue) << 42;
    QTest::newRow("msgCb2") << linesOf(expected::measuredValue) << 42;
    QTest::newRow("timCb3") << linesOf(expected::comparison) << 2;
    QTest::newRow("msgCb3") << linesOf(expected::comparison) << 2;
    QTest::newRow("timCb4") << linesOf(expected::action) << 13;
    QTest::newRow("msgCb4") << messageLines() << 71;
    QTest::newRow("msgCb5") << linesOf(expected::form) << 8;
    QTest::newRow("msgCb6") << linesOf(expected::repetition) << 10;
}

void TestOptionTables::everyCell()
{
    QFETCH(QStringList, lines);
    QFETCH(int, rows);
    const QString path = resource(QString::fromLatin1(QTest::currentDataTag()));
    QByteArray text;
    for (const QString& line : lines) {
        text += line.toLatin1() + "\r\n";
    }
    QCOMPARE(support::readFile(path), text);
    const cMyTableModel model(path);
    QCOMPARE(model.rowCount(), rows);
    QCOMPARE(model.getList(), rowsOf(lines));
}

void TestOptionTables::everyFieldsTableIsThere()
{
    QSet<QString> tables;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!field.optionTable.isEmpty()) {
            tables.insert(field.optionTable);
        }
    }
    QCOMPARE(tables.size(), 14);
    for (const QString& table : qAsConst(tables)) {
        QVERIFY2(cMyTableModel(resource(table)).rowCount() > 0, qPrintable(table));
    }
}

void TestOptionTables::everyOptionCanBeEncoded()
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.optionTable.isEmpty()) {
            continue;
        }
        const cMyTableModel options(resource(field.optionTable));
        for (int row = 0; row < options.rowCount(); ++row) {
            bool isNumber = false;
            const int value = options.cell(row, cMyTableModel::Value).toInt(&isNumber);
            QVERIFY(isNumber);
            QVERIFY2(value >= 0 && value < (1 << (8 * field.width)), qPrintable(field.name));
            QCOMPARE(options.rowOfValue(value), row);
        }
        // The default is one of the choices, too.
        const auto low = static_cast<quint8>(field.defaultBytes.at(0));
        const int high = field.width == 1 ? 0 : static_cast<quint8>(field.defaultBytes.at(1));
        QVERIFY2(options.rowOfValue(low | (high << 8)) >= 0, qPrintable(field.name));
    }
}

void TestOptionTables::labelsAndValuesAreUnique()
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.optionTable.isEmpty()) {
            continue;
        }
        const cMyTableModel options(resource(field.optionTable));
        QSet<QString> labels;
        for (const QStringList& row : options.getList()) {
            labels.insert(row.first());
        }
        QCOMPARE(labels.size(), options.rowCount());
    }
}

void TestOptionTables::thresholdsStayInsideTheirField()
{
    const cMyTableModel values(resource(QStringLiteral("msgCb2")));
    for (int row = 0; row < values.rowCount(); ++row) {
        const cMyThresholdScale scale = editor::thresholdScale(values, row);
        QVERIFY(scale.minimum * scale.factor >= -32768);
        QVERIFY(qRound(scale.maximum * scale.factor) <= 32768);
        for (const double limit : {scale.minimum, scale.maximum}) {
            QCOMPARE(editor::shownThreshold(qRound(limit * scale.factor), scale), limit);
        }
    }
}

QTEST_GUILESS_MAIN(TestOptionTables)
#include "test_optiontables.moc"
