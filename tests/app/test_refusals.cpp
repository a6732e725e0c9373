// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/descriptiontest.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTextDocument>
#include <QValidator>

/// What author, title and description do not take.
class TestRefusals : public support::DescriptionTest
{
    Q_OBJECT

private slots:
    void init();
    void aForbiddenCharacterIsUndone_data();
    void aForbiddenCharacterIsUndone();
    void aRefusedKeyIsLogged();
    void theCursorStaysWhereItWas();
    void aRefusedPasteOverASelection();
    void undoStillWorksAfterARefusal_data();
    void undoStillWorksAfterARefusal();
    void setFromOutside();
    void aDroppedFileIsNotText();
    void inputMethods();
    void pastingTooMuchIsRejectedWhole();
    void exactlyFull();
    void lineEditsRefuseForbiddenCharacters();
    void pastedLineFeedsStayOutOfLineEdits();
    void aRefusedKeyRestoresTheLoadedText();
};

using support::imageWithTexts;

void TestRefusals::init()
{
    startAfresh();
}

void TestRefusals::aForbiddenCharacterIsUndone_data()
{
    QTest::addColumn<QString>("character");
    QTest::newRow("letter outside ASCII") << QString::fromUtf8("ą");
    QTest::newRow("letter in Latin-1") << QString::fromUtf8("é");
    QTest::newRow("no-break space") << QString(QChar(0xA0));
    QTest::newRow("delete") << QString(QChar(0x7F));
    QTest::newRow("two code units") << QString::fromUtf8("🐠");
    QTest::newRow("tab") << QStringLiteral("\t");
}

void TestRefusals::aForbiddenCharacterIsUndone()
{
    QFETCH(QString, character);
    support::type(*description(), "abc");
    const QByteArray before = support::imageOf(*m_window);
    description()->moveCursor(QTextCursor::Left);
    description()->insertPlainText(character);
    QCOMPARE(description()->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(description()->textCursor().position(), 2);
    QCOMPARE(support::imageOf(*m_window), before);
    support::type(*description(), "!");
    QCOMPARE(description()->toPlainText(), QStringLiteral("ab!c"));
}

void TestRefusals::aRefusedKeyIsLogged()
{
    support::type(*description(), "abc");
    QTest::ignoreMessage(QtDebugMsg, "Pozycja: 3");
    QTest::ignoreMessage(QtDebugMsg, "Dlugosc: 4");
    support::type(*description(), "ą");
}

void TestRefusals::theCursorStaysWhereItWas()
{
    support::type(*description(), "one two three");
    QTextCursor cursor = description()->textCursor();
    cursor.setPosition(3);
    description()->setTextCursor(cursor); // since the last change of the text
    support::type(*description(), "ż");
    QCOMPARE(description()->textCursor().position(), 3);
    QCOMPARE(description()->toPlainText(), QStringLiteral("one two three"));
}

void TestRefusals::aRefusedPasteOverASelection()
{
    support::type(*description(), "one two three");
    QTextCursor cursor = description()->textCursor();
    cursor.setPosition(7);
    cursor.setPosition(4, QTextCursor::KeepAnchor);
    description()->setTextCursor(cursor);
    paste(QString::fromUtf8("deux été"));
    QCOMPARE(description()->toPlainText(), QStringLiteral("one two three"));
    QCOMPARE(description()->textCursor().selectedText(), QStringLiteral("two"));
    QCOMPARE(description()->textCursor().position(), 4);
    QCOMPARE(bytes(512, 14), QByteArray("one two three", 14));
}

void TestRefusals::undoStillWorksAfterARefusal_data()
{
    // t: typed key by key, p: pasted, i: put in from outside, b: backspace
    QTest::addColumn<QStringList>("edits");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* edits, const char* text) {
        QTest::newRow(name) << QString::fromUtf8(edits).split(QLatin1Char('/'))
                            << QString::fromLatin1(text);
    };
    row("a key", "thello/tą", "hello");
    row("a key, then more", "thello/tą/t world", "hello world");
    row("the first key", "tą/thello", "hello");
    row("after a backspace", "thello/b/tą", "hell");
    row("after a paste", "thello/p world/tą", "hello world");
    row("a paste", "thello/pą/t!", "hello!");
    row("from outside", "thello/ią/t!", "hello!");
    row("from outside after an insertion", "ihello/ią", "hello");
    row("from outside, first", "ią/thello", "hello");
}

void TestRefusals::undoStillWorksAfterARefusal()
{
    QFETCH(QStringList, edits);
    QFETCH(QString, text);
    for (const QString& edit : qAsConst(edits)) {
        const QString characters = edit.mid(1);
        if (edit.startsWith(QLatin1Char('t'))) {
            support::type(*description(), characters.toUtf8().constData());
        } else if (edit.startsWith(QLatin1Char('p'))) {
            paste(characters);
        } else if (edit.startsWith(QLatin1Char('i'))) {
            description()->insertPlainText(characters);
        } else {
            QTest::keyClick(description(), Qt::Key_Backspace);
        }
    }
    const auto isStored = [this] {
        const QByteArray shown = description()->toPlainText().toLatin1() + '\0';
        return bytes(512, static_cast<int>(shown.size())) == shown;
    };
    QCOMPARE(description()->toPlainText(), text);
    QVERIFY(isStored());
    for (int undone = 0; undone < 10; ++undone) {
        QTest::keyClick(description(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!description()->toPlainText().contains(QString::fromUtf8("ą")));
        QVERIFY(isStored());
    }
    QCOMPARE(description()->toPlainText(), QString());
    for (int redone = 0; redone < 10; ++redone) {
        QTest::keyClick(description(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(!description()->toPlainText().contains(QString::fromUtf8("ą")));
        QVERIFY(isStored());
    }
    QCOMPARE(description()->toPlainText(), text);
}

void TestRefusals::setFromOutside()
{
    description()->setPlainText(QStringLiteral("abc"));
    description()->setPlainText(QString::fromUtf8("abcą"));
    QCOMPARE(description()->toPlainText(), QStringLiteral("abc"));
    description()->setPlainText(QString(512, QLatin1Char('x')));
    QCOMPARE(description()->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(bytes(512, 4), QByteArray("abc", 4));
    support::type(*description(), "d");
    description()->setPlainText(QString::fromUtf8("ó"));
    QVERIFY(!bytes(512, 512).contains('?'));
    QVERIFY(!description()->toPlainText().contains(QString::fromUtf8("ó")));
}

void TestRefusals::aDroppedFileIsNotText()
{
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/x.mio"))});
    file.setText(QStringLiteral("file:///tmp/x.mio"));
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(description()->viewport(), &enter);
    QVERIFY(!enter.isAccepted());
    QMimeData words;
    words.setText(QStringLiteral("words"));
    QDragEnterEvent wordsEnter(QPoint(5, 5), Qt::CopyAction, &words, Qt::LeftButton,
                               Qt::NoModifier);
    QCoreApplication::sendEvent(description()->viewport(), &wordsEnter);
    QVERIFY(wordsEnter.isAccepted());
}

void TestRefusals::inputMethods()
{
    QInputMethodEvent refused(QString(), {});
    refused.setCommitString(QString::fromUtf8("ż"));
    QCoreApplication::sendEvent(description(), &refused);
    QCOMPARE(description()->toPlainText(), QString());
    QInputMethodEvent taken(QString(), {});
    taken.setCommitString(QStringLiteral("abc"));
    QCoreApplication::sendEvent(description(), &taken);
    QCOMPARE(description()->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(bytes(512, 4), QByteArray("abc", 4));
}

void TestRefusals::pastingTooMuchIsRejectedWhole()
{
    support::type(*description(), "abc");
    const QByteArray before = support::imageOf(*m_window);
    paste(QString(600, QLatin1Char('x')));
    QCOMPARE(description()->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(support::imageOf(*m_window), before);
}

void TestRefusals::exactlyFull()
{
    paste(QString(511, QLatin1Char('x')));
    QCOMPARE(bytes(512, 512), QByteArray(511, 'x') + '\0');
    QCOMPARE(support::bytesOf(*support::settingsImage(*m_window), 2000).size(), 1024);
    paste(QStringLiteral("\n"));
    QCOMPARE(bytes(512, 512), QByteArray(511, 'x') + '\0');
    QCOMPARE(description()->toPlainText().size(), 511);
}

void TestRefusals::lineEditsRefuseForbiddenCharacters()
{
    for (QLineEdit* line : {author(), title()}) {
        QVERIFY(line->validator()->inherits("QRegularExpressionValidator"));
        support::type(*line, "aąbéc");
        QCOMPARE(line->text(), QStringLiteral("abc"));
    }
    QCOMPARE(author()->maxLength(), 15);
    QCOMPARE(title()->maxLength(), 31);
    QCOMPARE(bytes(16, 4), QByteArray("abc", 4));
    QCOMPARE(bytes(32, 4), QByteArray("abc", 4));
}

void TestRefusals::pastedLineFeedsStayOutOfLineEdits()
{
    QGuiApplication::clipboard()->setText(QStringLiteral("abc\n"));
    author()->paste();
    QVERIFY(!bytes(16, 16).contains('\n'));
    QVERIFY(!author()->text().contains(QLatin1Char('\n')));
}

void TestRefusals::aRefusedKeyRestoresTheLoadedText()
{
    support::type(*description(), "older text");
    support::load(*m_window, imageWithTexts({}, {}, QByteArray("J\xF3zek\0", 6)));
    description()->moveCursor(QTextCursor::End);
    support::type(*description(), "ą");
    QCOMPARE(description()->toPlainText(), QString::fromUtf8("Józek"));
    support::type(*description(), "ó");
    QCOMPARE(description()->toPlainText(), QString::fromUtf8("Józek"));
    QCOMPARE(description()->textCursor().position(), 5);
    QCOMPARE(bytes(512, 6), QByteArray("J\xF3zek\0", 6));
}

MIOLKA_GUI_TEST_MAIN(TestRefusals)
#include "test_refusals.moc"
