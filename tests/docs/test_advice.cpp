// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/docs/completeadvice.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using support::completeTexts;
using support::sourceOf;
using support::Texts;

/// What the manual says about fields and choices.
class TestAdvice : public QObject
{
    Q_OBJECT

private slots:
    void textsAreKeptByTheirKeys();
    void completeAdviceHasNoFaults();
    void aMissingTextIsNamed_data();
    void aMissingTextIsNamed();
    void anEmptyTextIsMissing();
    void aKeyThatMeansNothingIsNamed_data();
    void aKeyThatMeansNothingIsNamed();
    void aKeyThatComesTwiceIsNamed();
    void wordsBeforeTheFirstKeyAreNoComment();
    void someChoicesMaySpeakForThemselves_data();
    void someChoicesMaySpeakForThemselves();
    void timerChoicesMeanWhatMessageChoicesMean();
    void timerChoicesCanHaveTheirOwnMeaning();
    void theGeneratorEndsWhereAdviceIsMissing();
    void theGeneratorWritesThePages();
};

namespace {

struct Ended
{
    int status;
    QString errors;
};

Ended generate(const QString& source, const QString& directory)
{
    const QString advice = directory + QStringLiteral("/advice.txt");
    QFile file(advice);
    file.open(QIODevice::WriteOnly);
    file.write(source.toUtf8());
    file.close();
    QProcess process;
    process.start(QStringLiteral(MIOLKA_FIELDTABLES), {advice, directory});
    process.waitForFinished();
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

void TestAdvice::textsAreKeptByTheirKeys()
{
    const cMyAdvice advice(
        QStringLiteral("# c\n\n[volume]\nLoud.\n\n- a [list]\n[title]\n\nShort.\n"));
    QCOMPARE(advice.text(QStringLiteral("volume")), QStringLiteral("Loud.\n\n- a [list]"));
    QCOMPARE(advice.text(QStringLiteral("title")), QStringLiteral("Short."));
    QCOMPARE(advice.text(QStringLiteral("author")), QString());
}

void TestAdvice::completeAdviceHasNoFaults()
{
    QCOMPARE(cMyAdvice(sourceOf(completeTexts())).faults(), QStringList());
}

void TestAdvice::aMissingTextIsNamed_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("faults");
    const auto field = [](const char* key) {
        QTest::newRow(key) << QString::fromLatin1(key)
                           << QStringList{QStringLiteral("no advice for the field %1")
                                              .arg(QString::fromLatin1(key))};
    };
    field("diveThreshold");
    field("author");
    field("programVersion");
    field("timerRule.action");
    field("messageRule.form");
    const QString choice = QStringLiteral("no meaning of the choice %1");
    QTest::newRow("condition, of both kinds of rules")
        << QStringLiteral("msgCb1/2")
        << QStringList{choice.arg(QStringLiteral("timCb1/2 (at the beginning of dive)")),
                       choice.arg(QStringLiteral("msgCb1/2 (at the beginning of dive)"))};
    QTest::newRow("action") << QStringLiteral("timCb4/129")
                            << QStringList{
                                   choice.arg(QStringLiteral("timCb4/129 (Timer 1 - START)"))};
    QTest::newRow("form") << QStringLiteral("msgCb5/2")
                          << QStringList{choice.arg(QStringLiteral("msgCb5/2 ((value))"))};
    QTest::newRow("repetition") << QStringLiteral("msgCb6/255")
                                << QStringList{choice.arg(QStringLiteral("msgCb6/255 (still)"))};
}

void TestAdvice::aMissingTextIsNamed()
{
    QFETCH(QString, key);
    QFETCH(QStringList, faults);
    Texts texts = completeTexts();
    QVERIFY(texts.remove(key) == 1);
    QCOMPARE(cMyAdvice(sourceOf(texts)).faults(), faults);
}

void TestAdvice::anEmptyTextIsMissing()
{
    Texts texts = completeTexts();
    texts.insert(QStringLiteral("volume"), QStringLiteral("\n \n"));
    QCOMPARE(cMyAdvice(sourceOf(texts)).faults(),
             QStringList{QStringLiteral("no advice for the field volume")});
}

void TestAdvice::aKeyThatMeansNothingIsNamed_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key : {"depth", "msgCb1/12", "msgCb9/0", "timerRule01.condition", "parCb1"}) {
        QTest::newRow(key) << QString::fromLatin1(key);
    }
}

void TestAdvice::aKeyThatMeansNothingIsNamed()
{
    QFETCH(QString, key);
    Texts texts = completeTexts();
    texts.insert(key, QStringLiteral("Words."));
    QCOMPARE(cMyAdvice(sourceOf(texts)).faults(),
             QStringList{QStringLiteral("unknown key \"%1\"").arg(key)});
}

void TestAdvice::aKeyThatComesTwiceIsNamed()
{
    const QString source = sourceOf(completeTexts()) + QStringLiteral("[volume]\nAgain.\n");
    QCOMPARE(cMyAdvice(source).faults(), QStringList{QStringLiteral("key \"volume\" comes twice")});
}

void TestAdvice::wordsBeforeTheFirstKeyAreNoComment()
{
    const QString source = QStringLiteral("[vol ume]\n") + sourceOf(completeTexts());
    QCOMPARE(cMyAdvice(source).faults(), QStringList{QStringLiteral("unknown key \"[vol ume]\"")});
}

void TestAdvice::someChoicesMaySpeakForThemselves_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key : {"msgCb3/0", "timCb3/1", "msgCb4/32", "parCb1/150"}) {
        QTest::newRow(key) << QString::fromLatin1(key);
    }
}

void TestAdvice::someChoicesMaySpeakForThemselves()
{
    QFETCH(QString, key);
    Texts texts = completeTexts();
    QVERIFY(!texts.contains(key));
    texts.insert(key, QStringLiteral("Or not."));
    QCOMPARE(cMyAdvice(sourceOf(texts)).faults(), QStringList());
}

void TestAdvice::timerChoicesMeanWhatMessageChoicesMean()
{
    const cMyAdvice advice(sourceOf(completeTexts()));
    QCOMPARE(advice.meaning(QStringLiteral("timCb2"), 32), QStringLiteral("Text of msgCb2/32."));
    QCOMPARE(advice.meaning(QStringLiteral("timCb4"), 128), QStringLiteral("Text of timCb4/128."));
}

void TestAdvice::timerChoicesCanHaveTheirOwnMeaning()
{
    Texts texts = completeTexts();
    texts.insert(QStringLiteral("timCb2/32"), QStringLiteral("Deep."));
    const cMyAdvice advice(sourceOf(texts));
    QCOMPARE(advice.meaning(QStringLiteral("timCb2"), 32), QStringLiteral("Deep."));
    QCOMPARE(advice.meaning(QStringLiteral("msgCb2"), 32), QStringLiteral("Text of msgCb2/32."));
}

void TestAdvice::theGeneratorEndsWhereAdviceIsMissing()
{
    const QTemporaryDir directory;
    Texts texts = completeTexts();
    texts.remove(QStringLiteral("periodB"));
    const Ended ended = generate(sourceOf(texts), directory.path());
    QCOMPARE(ended.status, 1);
    QVERIFY2(ended.errors.contains(QStringLiteral("no advice for the field periodB")),
             qPrintable(ended.errors));
    QCOMPARE(QDir(directory.path()).entryList({QStringLiteral("*.md")}), QStringList());
}

void TestAdvice::theGeneratorWritesThePages()
{
    const QTemporaryDir directory;
    const Ended ended = generate(sourceOf(completeTexts()), directory.path());
    QCOMPARE(ended.errors, QString());
    QCOMPARE(ended.status, 0);
    QFile page(directory.filePath(QStringLiteral("fields-parameters.md")));
    QVERIFY(page.open(QIODevice::ReadOnly));
    QVERIFY(page.readAll().contains("1. Speaker volume"));
}

QTEST_GUILESS_MAIN(TestAdvice)
#include "test_advice.moc"
