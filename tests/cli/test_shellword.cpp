// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/shellword.h"

#include <QProcess>
#include <QtTest>

class TestShellWord : public QObject
{
    Q_OBJECT

private slots:
    void plainWordsStay();
    void shellReadsTheText_data();
    void shellReadsTheText();
};

void TestShellWord::plainWordsStay()
{
    QCOMPARE(cli::shellWord("/home/diver/a-1_2.mio"), QString("/home/diver/a-1_2.mio"));
    QCOMPARE(cli::shellWord("a b"), QString("'a b'"));
}

void TestShellWord::shellReadsTheText_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "plain", "a b", "it's", "''", "$HOME", "`id`", "a\\b", "*", "~",
                             "a;b", "\"", "!x", "a#b", "#", "za\xc5\xbc\xc3\xb3\xc5\x82\xc4\x87"}) {
        QTest::newRow(text) << QString::fromUtf8(text);
    }
}

void TestShellWord::shellReadsTheText()
{
    QFETCH(QString, text);
    QProcess shell;
    shell.start("sh", {"-c", "printf %s " + cli::shellWord(text)});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(QString::fromUtf8(shell.readAllStandardOutput()), text);
}

QTEST_GUILESS_MAIN(TestShellWord)
#include "test_shellword.moc"
