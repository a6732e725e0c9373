// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/wordreader.h"

#include <QBuffer>
#include <QtTest>

class TestWordReader : public QObject
{
    Q_OBJECT

private slots:
    void splitsAtAsciiWhiteSpaceOnly_data();
    void splitsAtAsciiWhiteSpaceOnly();
    void wordsAcrossBufferEnds();
    void overlongWordsAreCut();
    void aDeviceThatGivesByteByByte();
    void aDeviceThatFails();
    void linesAreCounted_data();
    void linesAreCounted();
    void aCutWordIsKnown_data();
    void aCutWordIsKnown();
};

namespace {

QList<QByteArray> wordsOf(QIODevice& device)
{
    cMyWordReader reader(device);
    QList<QByteArray> words;
    for (std::string_view word = reader.next(); !word.empty(); word = reader.next()) {
        words.append(QByteArray(word.data(), static_cast<int>(word.size())));
    }
    return words;
}

QList<QByteArray> wordsOf(QByteArray text)
{
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    return wordsOf(static_cast<QIODevice&>(buffer));
}

/// Gives one byte at a time and fails after a number of them.
class Trickle : public QIODevice
{
public:
    Trickle(QByteArray text, int limit) : m_text(std::move(text)), m_limit(limit)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        if (m_position == m_limit) {
            return -1;
        }
        if (maxSize == 0 || m_position == m_text.size()) {
            return 0;
        }
        *data = m_text.at(m_position++);
        return 1;
    }
    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

private:
    QByteArray m_text;
    int m_limit;
    int m_position = 0;
};

} // namespace

void TestWordReader::splitsAtAsciiWhiteSpaceOnly_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QList<QByteArray>>("words");
    QTest::newRow("empty") << QByteArray() << QList<QByteArray>();
    QTest::newRow("white space alone") << QByteArray(" \t\n\v\f\r\n\n ") << QList<QByteArray>();
    QTest::newRow("all kinds") << QByteArray("a b\tc\nd\ve\ff\rg\r\n\r\nh")
                               << QList<QByteArray>{"a", "b", "c", "d", "e", "f", "g", "h"};
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << QList<QByteArray>{QByteArray("a\0b", 3)};
    QTest::newRow("byte-order mark")
        << QByteArray("\xEF\xBB\xBF:00") << QList<QByteArray>{"\xEF\xBB\xBF:00"};
    QTest::newRow("no-break space") << QByteArray("a\xC2\xA0"
                                                  "b\xA0"
                                                  "c")
                                    << QList<QByteArray>{"a\xC2\xA0"
                                                         "b\xA0"
                                                         "c"};
    QTest::newRow("other controls") << QByteArray("a\x1C\x1F\x85\x08"
                                                  "b")
                                    << QList<QByteArray>{"a\x1C\x1F\x85\x08"
                                                         "b"};
}

void TestWordReader::splitsAtAsciiWhiteSpaceOnly()
{
    QFETCH(QByteArray, text);
    QFETCH(QList<QByteArray>, words);
    QCOMPARE(wordsOf(text), words);
}

void TestWordReader::wordsAcrossBufferEnds()
{
    QByteArray text;
    QList<QByteArray> expected;
    for (int i = 0; text.size() < 300000; ++i) {
        const QByteArray word = QByteArray::number(i) + QByteArray(i % 523, 'x');
        expected.append(word.left(image::maxRecordText));
        text += word + ((i % 3) != 0 ? "\n" : "\r\n\r\n");
    }
    QCOMPARE(wordsOf(text), expected);
}

void TestWordReader::overlongWordsAreCut()
{
    const QByteArray record = ":00000001FF";
    for (const int length : {520, 521, 522, 65535, 65536, 65537, 200000}) {
        const QByteArray text = record + ' ' + QByteArray(length, 'x') + '\n' + record;
        QCOMPARE(wordsOf(text),
                 (QList<QByteArray>{record, QByteArray(std::min(length, 521), 'x'), record}));
    }
}

void TestWordReader::aDeviceThatGivesByteByByte()
{
    Trickle device("one two\nthree", 1000);
    QCOMPARE(wordsOf(device), (QList<QByteArray>{"one", "two", "three"}));
}

void TestWordReader::aDeviceThatFails()
{
    Trickle device("one two\nthree", 6);
    QCOMPARE(wordsOf(device), (QList<QByteArray>{"one", "tw"}));
}

void TestWordReader::linesAreCounted_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QList<int>>("lines");
    QTest::newRow("line feeds") << QByteArray("a\nb\n\nc") << QList<int>{1, 2, 4};
    QTest::newRow("both") << QByteArray("a\r\nb\r\n\r\nc") << QList<int>{1, 2, 4};
    QTest::newRow("carriage returns") << QByteArray("a\rb\r\rc") << QList<int>{1, 2, 4};
    QTest::newRow("blanks") << QByteArray("\na b\t\fc\vd\ne") << QList<int>{2, 2, 2, 2, 3};
    QTest::newRow("behind a long word")
        << QByteArray(200000, 'x') + "\n" + QByteArray(200000, '\n') + "y" << QList<int>{1, 200002};
}

void TestWordReader::linesAreCounted()
{
    QFETCH(QByteArray, text);
    QFETCH(QList<int>, lines);
    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    cMyWordReader reader(buffer);
    QList<int> found;
    while (!reader.next().empty()) {
        found.append(static_cast<int>(reader.line()));
    }
    QCOMPARE(found, lines);
}

void TestWordReader::aCutWordIsKnown_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("behind");
    QTest::addColumn<bool>("isCut");
    QTest::newRow("short") << 10 << QByteArray(" x") << false;
    QTest::newRow("longest, then a blank") << image::maxRecordText << QByteArray(" x") << false;
    QTest::newRow("longest, at the end") << image::maxRecordText << QByteArray() << false;
    QTest::newRow("one more") << image::maxRecordText + 1 << QByteArray() << true;
    QTest::newRow("one more, then a blank") << image::maxRecordText + 1 << QByteArray(" x") << true;
}

void TestWordReader::aCutWordIsKnown()
{
    QFETCH(int, length);
    QFETCH(QByteArray, behind);
    for (const int before : {0, 65536 - image::maxRecordText, 65535}) {
        QByteArray text = QByteArray(before, ' ') + QByteArray(length, 'a') + behind;
        QBuffer buffer(&text);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        cMyWordReader reader(buffer);
        QVERIFY(!reader.next().empty());
        QTEST(reader.isCut(), "isCut");
    }
}

QTEST_GUILESS_MAIN(TestWordReader)
#include "test_wordreader.moc"
