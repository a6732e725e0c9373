// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/windowtest.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextDocument>
#include <QValidator>

using support::child;

/// Author, title and description.
class TestDescription : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void typingIsStored();
    void anAuthorFillsItsField();
    void aShorterTitleLeavesTheTail();
    void aForbiddenCharacterIsUndone_data();
    void aForbiddenCharacterIsUndone();
    void aRefusedKeyIsLogged();
    void theCursorStaysWhereItWas();
    void aRefusedPasteOverASelection();
    void undoStillWorksAfterARefusal_data();
    void undoStillWorksAfterARefusal();
    void setFromOutside();
    void undoOfAnUnterminatedText();
    void nothingOfAnotherImageComesBack();
    void aDroppedFileIsNotText();
    void inputMethods();
    void pastingTooMuchIsRejectedWhole();
    void exactlyFull();
    void lineBreaksAreLineFeeds();
    void lineEditsRefuseForbiddenCharacters();
    void pastedLineFeedsStayOutOfLineEdits();
    void loadingShowsAllThree();
    void loadedTextsStayAsTheyAre_data();
    void loadedTextsStayAsTheyAre();
    void aLoadedTextCanBeEdited();
    void aRefusedKeyRestoresTheLoadedText();
    void undoBringsBackWhatWasLoaded();
    void anEditOfOneTextLeavesTheOthers();
    void withoutATerminator();
    void theCounters();
    void tabLeavesTheDescription();
    void textIsNotMarkup();

private:
    [[nodiscard]] QLineEdit* author() const { return child<QLineEdit>(*m_window, "leAuthor"); }

    [[nodiscard]] QLineEdit* title() const { return child<QLineEdit>(*m_window, "leTitle"); }

    [[nodiscard]] QPlainTextEdit* description() const
    {
        return child<QPlainTextEdit>(*m_window, "pteDescription");
    }

    [[nodiscard]] QByteArray bytes(int address, int count) const
    {
        return support::imageOf(*m_window).mid(address, count);
    }

    void paste(const QString& text) const
    {
        QGuiApplication::clipboard()->setText(text);
        description()->paste();
    }

    std::unique_ptr<MainWindow> m_window;
};

namespace {

QByteArray imageWithTexts(const QByteArray& author, const QByteArray& title,
                          const QByteArray& description)
{
    QByteArray image = support::templateImage();
    image.replace(16, author.size(), author);
    image.replace(32, title.size(), title);
    return image.replace(512, description.size(), description);
}

} // namespace

void TestDescription::init()
{
    if (m_window == nullptr) {
        m_window = std::make_unique<MainWindow>();
        m_window->show();
    }
    // Another text first, so that the history of the last test's edits is gone.
    support::load(*m_window, QByteArray(1024, 'x'));
    support::load(*m_window, support::templateImage());
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

void TestDescription::aForbiddenCharacterIsUndone_data()
{
    QTest::addColumn<QString>("character");
    QTest::newRow("letter outside ASCII") << QString::fromUtf8("ą");
    QTest::newRow("letter in Latin-1") << QString::fromUtf8("é");
    QTest::newRow("no-break space") << QString(QChar(0xA0));
    QTest::newRow("delete") << QString(QChar(0x7F));
    QTest::newRow("two code units") << QString::fromUtf8("🐠");
    QTest::newRow("tab") << QStringLiteral("\t");
}

void TestDescription::aForbiddenCharacterIsUndone()
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

void TestDescription::aRefusedKeyIsLogged()
{
    support::type(*description(), "abc");
    QTest::ignoreMessage(QtDebugMsg, "Pozycja: 3");
    QTest::ignoreMessage(QtDebugMsg, "Dlugosc: 4");
    support::type(*description(), "ą");
}

void TestDescription::theCursorStaysWhereItWas()
{
    support::type(*description(), "one two three");
    QTextCursor cursor = description()->textCursor();
    cursor.setPosition(3);
    description()->setTextCursor(cursor); // since the last change of the text
    support::type(*description(), "ż");
    QCOMPARE(description()->textCursor().position(), 3);
    QCOMPARE(description()->toPlainText(), QStringLiteral("one two three"));
}

void TestDescription::aRefusedPasteOverASelection()
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

void TestDescription::undoStillWorksAfterARefusal_data()
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

void TestDescription::undoStillWorksAfterARefusal()
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
        return bytes(512, shown.size()) == shown;
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

void TestDescription::setFromOutside()
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

void TestDescription::aDroppedFileIsNotText()
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

void TestDescription::inputMethods()
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

void TestDescription::pastingTooMuchIsRejectedWhole()
{
    support::type(*description(), "abc");
    const QByteArray before = support::imageOf(*m_window);
    paste(QString(600, QLatin1Char('x')));
    QCOMPARE(description()->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(support::imageOf(*m_window), before);
}

void TestDescription::exactlyFull()
{
    paste(QString(511, QLatin1Char('x')));
    QCOMPARE(bytes(512, 512), QByteArray(511, 'x') + '\0');
    QCOMPARE(support::bytesOf(*support::settingsImage(*m_window), 2000).size(), 1024);
    paste(QStringLiteral("\n"));
    QCOMPARE(bytes(512, 512), QByteArray(511, 'x') + '\0');
    QCOMPARE(description()->toPlainText().size(), 511);
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

void TestDescription::lineEditsRefuseForbiddenCharacters()
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

void TestDescription::pastedLineFeedsStayOutOfLineEdits()
{
    QGuiApplication::clipboard()->setText(QStringLiteral("abc\n"));
    author()->paste();
    QVERIFY(!bytes(16, 16).contains('\n'));
    QVERIFY(!author()->text().contains(QLatin1Char('\n')));
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

void TestDescription::aRefusedKeyRestoresTheLoadedText()
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
