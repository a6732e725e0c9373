// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/descriptiontest.h"

#include <QLabel>
#include <QTabWidget>
#include <QTextDocument>

/// Author, title and description.
class TestDescription : public support::DescriptionTest
{
    Q_OBJECT

private slots:
    void init();
    void typingIsStored();
    void anAuthorFillsItsField();
    void aShorterTitleLeavesTheTail();
    void undoOfAnUnterminatedText();
    void nothingOfAnotherImageComesBack();
    void lineBreaksAreLineFeeds();
    void loadingShowsAllThree();
    void theStartPageIsFilledByLoadingOnly();
    void loadedTextsStayAsTheyAre_data();
    void loadedTextsStayAsTheyAre();
    void aLoadedTextCanBeEdited();
    void undoBringsBackWhatWasLoaded();
    void anEditOfOneTextLeavesTheOthers();
    void withoutATerminator();
    void theCounters();
    void tabLeavesTheDescription();
    void textIsNotMarkup();
};

using support::child;
using support::imageWithTexts;

void TestDescription::init()
{
    startAfresh();
}

void TestDescription::typingIsStored()
{
    const QByteArray before = support::imageOf(*m_window);
    support::type(*description(), "Dive 1");
    QCOMPARE(bytes(512, 8), QByteArray("Dive 1\0 ", 8)); // behind the end the tail is left
    QCOMPARE(support::imageOf(*m_window).left(512), before.left(512));
}

void TestDescription::anAuthorFillsItsField()
{
    support::type(*author(), "ABCDEFGHIJKLMNOPQRS");
    QCOMPARE(author()->text(), QStringLiteral("ABCDEFGHIJKLMNO"));
    QCOMPARE(bytes(16, 16), QByteArray("ABCDEFGHIJKLMNO", 16));
    QCOMPARE(bytes(32, 32), support::templateImage().mid(32, 32));
    support::type(*title(), "0123456789012345678901234567890123");
    QCOMPARE(bytes(32, 32), QByteArray("0123456789012345678901234567890", 32));
}

void TestDescription::aShorterTitleLeavesTheTail()
{
    title()->setText(QStringLiteral("ABCDEF"));
    QCOMPARE(bytes(32, 7), QByteArray("ABCDEF", 7));
    title()->setText(QStringLiteral("XY"));
    QCOMPARE(bytes(32, 7), QByteArray("XY\0DEF", 7));
}

void TestDescription::undoOfAnUnterminatedText()
{
    const QByteArray image =
        imageWithTexts(QByteArray(16, 'a'), QByteArray("t\xA0\r\0", 4), QByteArray(512, 'd'));
    support::load(*m_window, image);
    description()->moveCursor(QTextCursor::End);
    for (QWidget* widget : {static_cast<QWidget*>(author()), static_cast<QWidget*>(title()),
                            static_cast<QWidget*>(description())}) {
        QTest::keyClick(widget, Qt::Key_End);
        QTest::keyClick(widget, Qt::Key_Backspace);
        QVERIFY(support::imageOf(*m_window) != image);
        QTest::keyClick(widget, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(support::differences(image, support::imageOf(*m_window)), QString());
    }
    QCOMPARE(description()->toPlainText().size(), 512);
}

void TestDescription::nothingOfAnotherImageComesBack()
{
    support::load(*m_window,
                  imageWithTexts(QByteArray("J\xF3zek\0", 6), {}, QByteArray("J\xF3zek\0", 6)));
    author()->clear();
    description()->clear();
    support::type(*author(), "xó");
    support::type(*description(), "xó");
    QCOMPARE(author()->text(), QStringLiteral("x"));
    QCOMPARE(description()->toPlainText(), QStringLiteral("x"));
    const QByteArray image = support::imageOf(*m_window);
    support::load(*m_window, image); // the same texts in another file
    QVERIFY(!author()->isUndoAvailable());
    QVERIFY(!description()->document()->isUndoAvailable());
    support::load(*m_window, support::templateImage());
    support::type(*author(), "ó");
    support::type(*description(), "ó");
    QCOMPARE(support::imageOf(*m_window), support::templateImage());
}

void TestDescription::lineBreaksAreLineFeeds()
{
    support::type(*description(), "a");
    QTest::keyClick(description(), Qt::Key_Return);
    support::type(*description(), "b");
    QTest::keyClick(description(), Qt::Key_Return, Qt::ShiftModifier);
    support::type(*description(), "c|");
    QCOMPARE(bytes(512, 7), QByteArray("a\nb\nc|", 7));
}

void TestDescription::loadingShowsAllThree()
{
    const QByteArray image = imageWithTexts(QByteArray("Ann\0", 4), QByteArray("Reef\0", 5),
                                            QByteArray("Two\nlines\0", 10));
    support::load(*m_window, image);
    QCOMPARE(author()->text(), QStringLiteral("Ann"));
    QCOMPARE(title()->text(), QStringLiteral("Reef"));
    QCOMPARE(description()->toPlainText(), QStringLiteral("Two\nlines"));
    QCOMPARE(child<QLabel>(*m_window, "lParamAutor")->text(), QStringLiteral("Ann"));
    QCOMPARE(child<QLabel>(*m_window, "lParamTytul")->text(), QStringLiteral("Reef"));
    QCOMPARE(child<QPlainTextEdit>(*m_window, "pteParamDesc")->toPlainText(),
             QStringLiteral("Two\nlines"));
    QCOMPARE(support::imageOf(*m_window), image);
}

void TestDescription::theStartPageIsFilledByLoadingOnly()
{
    support::load(*m_window, imageWithTexts(QByteArray("Ann\0", 4), QByteArray("Reef\0", 5),
                                            QByteArray("Two\0", 4)));
    const auto shown = [this] {
        return QStringList{child<QLabel>(*m_window, "lParamAutor")->text(),
                           child<QLabel>(*m_window, "lParamTytul")->text(),
                           child<QPlainTextEdit>(*m_window, "pteParamDesc")->toPlainText()};
    };
    support::type(*author(), "a");
    support::type(*title(), "s");
    description()->moveCursor(QTextCursor::End);
    support::type(*description(), "!");
    QCOMPARE(bytes(16, 5), QByteArray("Anna\0", 5));
    QCOMPARE(bytes(32, 6), QByteArray("Reefs\0", 6));
    QCOMPARE(bytes(512, 5), QByteArray("Two!\0", 5));
    QCOMPARE(shown(),
             (QStringList{QStringLiteral("Ann"), QStringLiteral("Reef"), QStringLiteral("Two")}));
    support::load(*m_window, support::imageOf(*m_window));
    QCOMPARE(shown(), (QStringList{QStringLiteral("Anna"), QStringLiteral("Reefs"),
                                   QStringLiteral("Two!")}));
}

void TestDescription::loadedTextsStayAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("plain") << QByteArray("plain\0tail", 10);
    QTest::newRow("Latin-1") << QByteArray("J\xF3zek \xA0 \xE9\0", 11);
    QTest::newRow("carriage returns") << QByteArray("a\r\nb\rc\n\0", 9);
    QTest::newRow("control characters") << QByteArray("\x01\t\x1B\x7F\0", 5);
    QTest::newRow("without an end") << QByteArray(16, 'x');
    QTest::newRow("erased") << QByteArray(16, '\xFF');
}

void TestDescription::loadedTextsStayAsTheyAre()
{
    QFETCH(QByteArray, text);
    const QByteArray image = imageWithTexts(text, text, text);
    support::load(*m_window, image);
    QCOMPARE(support::differences(image, support::imageOf(*m_window)), QString());
    support::load(*m_window, support::templateImage());
    support::load(*m_window, image);
    support::load(*m_window, image);
    QCOMPARE(support::differences(image, support::imageOf(*m_window)), QString());
}

void TestDescription::aLoadedTextCanBeEdited()
{
    const QByteArray text("J\xF3zek\xA0w \0", 9);
    support::load(*m_window, imageWithTexts(text, text, text));
    support::type(*author(), "1");
    support::type(*title(), "ą2");
    description()->moveCursor(QTextCursor::End);
    support::type(*description(), "3");
    QCOMPARE(bytes(16, 10), QByteArray("J\xF3zek\xA0w 1", 10));
    QCOMPARE(bytes(32, 10), QByteArray("J\xF3zek\xA0w 2", 10));
    QCOMPARE(bytes(512, 10), QByteArray("J\xF3zek\xA0w 3", 10));
}

void TestDescription::undoBringsBackWhatWasLoaded()
{
    support::load(*m_window, imageWithTexts({}, {}, QByteArray("J\xF3zek\0", 6)));
    description()->selectAll();
    QTest::keyClick(description(), Qt::Key_Delete);
    QCOMPARE(bytes(512, 1), QByteArray(1, '\0'));
    description()->undo();
    QCOMPARE(description()->toPlainText(), QString::fromUtf8("Józek"));
    QCOMPARE(bytes(512, 6), QByteArray("J\xF3zek\0", 6));
}

void TestDescription::anEditOfOneTextLeavesTheOthers()
{
    const QByteArray image = imageWithTexts(QByteArray(16, 'a'), QByteArray("t\rx\xA0y\0", 6),
                                            QByteArray("a\r\nb\xA0\0", 6));
    support::load(*m_window, image);
    support::type(*title(), "!");
    QCOMPARE(support::differences(image, support::imageOf(*m_window)),
             QStringLiteral("37:00->21 38:31->00"));
    QCOMPARE(bytes(16, 16), QByteArray(16, 'a'));
    QCOMPARE(bytes(512, 6), QByteArray("a\r\nb\xA0\0", 6));
}

void TestDescription::withoutATerminator()
{
    const QByteArray image = imageWithTexts({}, {}, QByteArray(512, 'd'));
    support::load(*m_window, image);
    QCOMPARE(description()->toPlainText(), QString(512, QLatin1Char('d')));
    QCOMPARE(support::imageOf(*m_window), image);
    description()->moveCursor(QTextCursor::End);
    support::type(*description(), "x");
    QCOMPARE(support::imageOf(*m_window), image);
    QTest::keyClick(description(), Qt::Key_Backspace);
    QCOMPARE(bytes(512, 512), QByteArray(511, 'd') + '\0');
    QCOMPARE(support::bytesOf(*support::settingsImage(*m_window), 2000).size(), 1024);
}

void TestDescription::theCounters()
{
    const auto shown = [this] {
        QStringList texts;
        for (const char* name : {"lAuthorFree", "lTitleFree", "lDescriptionFree"}) {
            texts << child<QLabel>(*m_window, name)->text();
        }
        return texts.join(QLatin1Char(' '));
    };
    QCOMPARE(shown(), QStringLiteral("[15] [31] [511]"));
    support::type(*author(), "Ann");
    support::type(*title(), "Reef");
    support::type(*description(), "ab");
    QTest::keyClick(description(), Qt::Key_Return);
    QCOMPARE(shown(), QStringLiteral("[12] [27] [508]"));
    support::load(*m_window, support::templateImage());
    QCOMPARE(shown(), QStringLiteral("[15] [31] [511]"));
}

void TestDescription::tabLeavesTheDescription()
{
    child<QTabWidget>(*m_window, "tabWidget")->setCurrentIndex(1);
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    description()->setFocus();
    QTest::keyClick(description(), Qt::Key_Tab);
    QVERIFY(!description()->hasFocus());
    QCOMPARE(description()->toPlainText(), QString());
}

void TestDescription::textIsNotMarkup()
{
    const QByteArray markup("<img src=x>\0", 12);
    support::load(*m_window, imageWithTexts(markup, markup, markup));
    for (const char* name : {"lParamAutor", "lParamTytul"}) {
        const auto* label = child<QLabel>(*m_window, name);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(label->text(), QStringLiteral("<img src=x>"));
    }
}

MIOLKA_GUI_TEST_MAIN(TestDescription)
#include "test_description.moc"
