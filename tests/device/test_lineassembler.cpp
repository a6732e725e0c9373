// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/lineassembler.h"

#include <QtTest>

class TestLineAssembler : public QObject
{
    Q_OBJECT

private slots:
    void linesCutAnywhere();
    void severalLinesInOnePacket();
    void anIncompleteLineWaits();
    void emptyLines();
    void zeroBytes_data();
    void zeroBytes();
    void anEndlessLineIsCut();
    void aLongLineDoesNotHarmTheNext();
    void clearingForgets();
    void manyLinesKeepNothing();
};

namespace {

void append(cMyLineAssembler& lines, const QByteArray& bytes)
{
    lines.append(bytes.constData(), bytes.size());
}

} // namespace

void TestLineAssembler::linesCutAnywhere()
{
    const QByteArray text("#ROOT\r\n:00000001FF\r\n");
    for (int first = 0; first <= text.size(); ++first) {
        for (int second = first; second <= text.size(); ++second) {
            cMyLineAssembler lines;
            QByteArrayList taken;
            for (const QByteArray& part :
                 {text.left(first), text.mid(first, second - first), text.mid(second)}) {
                append(lines, part);
                while (const auto line = lines.takeLine()) {
                    taken.append(*line);
                }
            }
            QCOMPARE(taken, QByteArrayList({"#ROOT\r\n", ":00000001FF\r\n"}));
        }
    }
}

void TestLineAssembler::severalLinesInOnePacket()
{
    cMyLineAssembler lines;
    append(lines, "a\r\nb\nc");
    QVERIFY(lines.hasLine());
    QCOMPARE(*lines.takeLine(), QByteArray("a\r\n"));
    QVERIFY(lines.hasLine());
    QCOMPARE(*lines.takeLine(), QByteArray("b\n"));
    QVERIFY(!lines.hasLine());
    QVERIFY(!lines.takeLine());
}

void TestLineAssembler::anIncompleteLineWaits()
{
    cMyLineAssembler lines;
    QVERIFY(!lines.takeLine());
    append(lines, "abc\r");
    QVERIFY(!lines.takeLine());
    append(lines, QByteArray());
    append(lines, "\n");
    QCOMPARE(*lines.takeLine(), QByteArray("abc\r\n"));
}

void TestLineAssembler::emptyLines()
{
    cMyLineAssembler lines;
    append(lines, "\r\n\n");
    QCOMPARE(*lines.takeLine(), QByteArray("\r\n"));
    QCOMPARE(*lines.takeLine(), QByteArray("\n"));
    QVERIFY(!lines.takeLine());
}

void TestLineAssembler::zeroBytes_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("cut at the first") << QByteArray("ab\0cd\r\n", 7) << QByteArray("ab");
    QTest::newRow("padding in front") << QByteArray("\0\0ab\r\n", 6) << QByteArray("ab\r\n");
    QTest::newRow("both") << QByteArray("\0a\0b\r\n", 6) << QByteArray("a");
    QTest::newRow("nothing else") << QByteArray("\0\0\n", 3) << QByteArray("\n");
    QTest::newRow("before the line end") << QByteArray("ab\0\r\n", 5) << QByteArray("ab");
}

void TestLineAssembler::zeroBytes()
{
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, line);
    cMyLineAssembler lines;
    append(lines, sent + "next\r\n");
    QCOMPARE(*lines.takeLine(), line);
    QCOMPARE(*lines.takeLine(), QByteArray("next\r\n"));
}

void TestLineAssembler::anEndlessLineIsCut()
{
    cMyLineAssembler lines;
    for (int i = 0; i < 1000; ++i) {
        append(lines, QByteArray(1000, 'x'));
        QVERIFY(!lines.takeLine());
    }
    append(lines, "y\r\nz\r\n");
    QCOMPARE(*lines.takeLine(), QByteArray(cMyLineAssembler::longestLine, 'x') + '\n');
    QCOMPARE(*lines.takeLine(), QByteArray("z\r\n"));
}

void TestLineAssembler::aLongLineDoesNotHarmTheNext()
{
    cMyLineAssembler lines;
    append(lines, "a\n" + QByteArray(cMyLineAssembler::longestLine + 1, 'x') + "\nb\n");
    QCOMPARE(*lines.takeLine(), QByteArray("a\n"));
    QCOMPARE(lines.takeLine()->size(), cMyLineAssembler::longestLine + 1);
    QCOMPARE(*lines.takeLine(), QByteArray("b\n"));
}

void TestLineAssembler::clearingForgets()
{
    cMyLineAssembler lines;
    append(lines, "a\nb");
    lines.clear();
    QVERIFY(!lines.takeLine());
    append(lines, "c\n");
    QCOMPARE(*lines.takeLine(), QByteArray("c\n"));
}

void TestLineAssembler::manyLinesKeepNothing()
{
    cMyLineAssembler lines;
    QByteArray text;
    for (int i = 0; i < 5000; ++i) {
        text += QByteArray::number(i) + '\n';
    }
    append(lines, text);
    for (int i = 0; i < 5000; ++i) {
        QCOMPARE(*lines.takeLine(), QByteArray::number(i) + '\n');
    }
    QVERIFY(!lines.takeLine());
}

QTEST_GUILESS_MAIN(TestLineAssembler)
#include "test_lineassembler.moc"
