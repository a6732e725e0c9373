// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/shortlabels.h"

#include <QFont>
#include <QtTest>

/// Which part of a label is left out where there is no room for all of it.
class TestShortLabels : public QObject
{
    Q_OBJECT

private slots:
    void whatHasRoomIsShownWhole();
    void theGapIsAsLateAsLabelsStayDifferent_data();
    void theGapIsAsLateAsLabelsStayDifferent();
    void listsKeepTheirEnd_data();
    void listsKeepTheirEnd();
    void alikeAtBothEnds();
    void noRowNoLabel();
};

namespace {

const QString text = QStringLiteral("0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWX");
constexpr int kept = 29; // characters beside the gap

/// With letters that are all as wide, so that room can be counted in them.
QFontMetrics metrics()
{
    return QFontMetrics(QFont(QStringLiteral("DejaVu Sans Mono")));
}

int widthOf(int letters)
{
    return metrics().horizontalAdvance(QString(letters, QLatin1Char('x')));
}

QString changedAt(QString label, int position)
{
    return label.replace(position, 1, QLatin1Char('-'));
}

QString withGap(const QString& label, int front)
{
    return label.left(front) + QChar(0x2026) + label.right(kept - front);
}

} // namespace

void TestShortLabels::whatHasRoomIsShownWhole()
{
    cMyShortLabels labels({text, changedAt(text, 0)}, metrics());
    QCOMPARE(labels.fullWidth(), widthOf(static_cast<int>(text.size())));
    QCOMPARE(labels.label(0, labels.fullWidth()), text);
    QVERIFY(labels.label(0, labels.fullWidth() - 1).contains(QChar(0x2026)));
}

void TestShortLabels::theGapIsAsLateAsLabelsStayDifferent_data()
{
    QTest::addColumn<int>("difference");
    QTest::addColumn<int>("front");
    QTest::newRow("different at the start") << 0 << 29;
    QTest::newRow("different in the last character of the front") << 28 << 29;
    QTest::newRow("different in the last character") << 59 << 22;
    QTest::newRow("different in the last quarter") << 53 << 22;
    QTest::newRow("different just before it") << 52 << 15;
    QTest::newRow("different in the last half") << 46 << 15;
    QTest::newRow("different just before that") << 45 << 7;
    QTest::newRow("different in the last three quarters") << 38 << 7;
}

void TestShortLabels::theGapIsAsLateAsLabelsStayDifferent()
{
    QFETCH(int, difference);
    QFETCH(int, front);
    const QString other = changedAt(text, difference);
    cMyShortLabels labels({text, other}, metrics());
    QCOMPARE(labels.label(0, widthOf(kept + 1)), withGap(text, front));
    QCOMPARE(labels.label(1, widthOf(kept + 1)), withGap(other, front));
}

void TestShortLabels::listsKeepTheirEnd_data()
{
    QTest::addColumn<int>("difference");
    QTest::addColumn<int>("front");
    QTest::newRow("different at the end") << 57 << 7;
    QTest::newRow("different after the quarter at the start") << 7 << 15;
    QTest::newRow("different after the half at the start") << 15 << 22;
}

void TestShortLabels::listsKeepTheirEnd()
{
    QFETCH(int, difference);
    QFETCH(int, front);
    const QString list = QString(text).replace(28, 3, QStringLiteral(" & "));
    const QString close = QString(list).replace(QStringLiteral(" & "), QStringLiteral("&"));
    const int beforeTheSign = difference < 28 ? difference : difference + 2;
    cMyShortLabels labels({list, changedAt(list, beforeTheSign)}, metrics());
    QCOMPARE(labels.label(0, widthOf(kept + 1)), withGap(close, front));
    QCOMPARE(labels.label(1, widthOf(kept + 1)), withGap(changedAt(close, difference), front));
    QCOMPARE(labels.label(0, widthOf(static_cast<int>(close.size()))), close);
}

void TestShortLabels::alikeAtBothEnds()
{
    const QString other = changedAt(text, 33);
    cMyShortLabels labels({text, other}, metrics());
    QCOMPARE(labels.label(0, widthOf(kept + 1)), text);
    QCOMPARE(labels.label(1, widthOf(kept + 1)), other);
}

void TestShortLabels::noRowNoLabel()
{
    cMyShortLabels labels({text}, metrics());
    QCOMPARE(labels.label(-1, 1), QString());
    QCOMPARE(labels.label(1, 1), QString());
}

QTEST_MAIN(TestShortLabels)
#include "test_shortlabels.moc"
