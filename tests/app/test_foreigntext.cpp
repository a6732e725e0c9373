// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/dialogscript.h"
#include "tests/support/foreigntext.h"
#include "tests/support/pipetrap.h"
#include "tests/support/windowtest.h"

#include <QFileDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QToolTip>

#include <optional>

using support::child;

/// What files say and what they are called is shown letter by letter, wherever it is shown.
class TestForeignText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void textsInASettingsFile_data();
    void textsInASettingsFile();
    void theTitle_data();
    void theTitle();
    void whetherToReplaceAFile_data();
    void whetherToReplaceAFile();
    void aFileThatIsMissing_data();
    void aFileThatIsMissing();
    void aToolTipInTheFileDialog();
    void cleanupTestCase();

private:
    /// The user types that name into the file dialog that the action opens, and is told something.
    void tellOf(const QString& name, const char* action, const QString& told);

    QTemporaryDir m_directory;
    std::unique_ptr<support::PipeTrap> m_pipe;
    std::unique_ptr<MainWindow> m_window;
};

namespace {

void addNames()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("less than") << QStringLiteral("a < b.mio");
    QTest::newRow("a picture") << QStringLiteral("<img src=pipe>.mio");
    // As deep as a name can be long.
    QTest::newRow("nested tables")
        << QStringLiteral("<table><tr><td>").repeated(16) + QStringLiteral(".mio");
    QTest::newRow("entities") << QStringLiteral("&lt;b&gt; &amp;.mio");
    QTest::newRow("mnemonics") << QStringLiteral("R&D && &Co.mio");
    QTest::newRow("places") << QStringLiteral("%1 %L2 [*]%n[*][*].mio");
    QTest::newRow("controls") << QStringLiteral("<b>\x01"
                                                "b\tc\x7F"
                                                "d\r\ne.mio");
    QTest::newRow("a mark of lengths") << QString::fromUtf8("long\u009Cshort.mio");
    QTest::newRow("backwards") << QString::fromUtf8("<b>a\u202Eoim.b\u202C.mio");
    QTest::newRow("wide") << QString(200, QLatin1Char('W')) + QStringLiteral(".mio");
}

} // namespace

void TestForeignText::initTestCase()
{
    QVERIFY(QDir::setCurrent(m_directory.path()));
    m_pipe = std::make_unique<support::PipeTrap>(m_directory.filePath(QStringLiteral("pipe")));
}

void TestForeignText::init()
{
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    child<QTabWidget>(*m_window, "tabWidget")->setCurrentIndex(0);
    QCoreApplication::processEvents();
}

void TestForeignText::cleanup()
{
    QVERIFY(!m_pipe->wasOpened());
    const QSize least = m_window->minimumSizeHint();
    QVERIFY(least.width() <= 640 && least.height() <= 480);
    m_window.reset();
}

void TestForeignText::textsInASettingsFile_data()
{
    support::addForeignTexts();
}

void TestForeignText::textsInASettingsFile()
{
    QFETCH(QString, text);
    const QByteArray bytes = text.toLatin1();
    support::Showing showing;
    support::load(*m_window, support::templateImage()
                                 .replace(16, 16, bytes.left(15).leftJustified(16, '\0'))
                                 .replace(32, 32, bytes.left(31).leftJustified(32, '\0'))
                                 .replace(512, 512, bytes.leftJustified(512, '\0')));
    showing.end(*m_window);
    support::verifyLiteral(*child<QLabel>(*m_window, "lParamAutor"), text.left(15));
    support::verifyLiteral(*child<QLabel>(*m_window, "lParamTytul"), text.left(31));
    QCOMPARE(child<QLineEdit>(*m_window, "leAuthor")->text(), text.left(15));
    QCOMPARE(child<QLineEdit>(*m_window, "leTitle")->text(), text.left(31));
    for (const char* name : {"pteDescription", "pteParamDesc"}) {
        QCOMPARE(child<QPlainTextEdit>(*m_window, name)->toPlainText(),
                 QString(text).replace(QLatin1Char('\r'), QLatin1Char('\n')));
    }
}

void TestForeignText::theTitle_data()
{
    addNames();
}

void TestForeignText::theTitle()
{
    QFETCH(QString, name);
    support::writeFile(name, support::settingsText(support::markedImage('x')));
    support::Showing showing;
    m_window->openFileCmdLine(name);
    showing.end(*m_window);
    // Doubled for Qt, which shows the pair as one.
    QCOMPARE(m_window->windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0 --- ") +
                                          m_directory.filePath(name).replace(
                                              QStringLiteral("[*]"), QStringLiteral("[*][*]")));
}

void TestForeignText::tellOf(const QString& name, const char* action, const QString& told)
{
    support::DialogScript user;
    std::optional<support::Showing> showing;
    user.act([&showing] { showing.emplace(); });
    user.chooseFile(name);
    user.act([&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        showing->end(*box);
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QCOMPARE(box->text(),
                 QString(name).replace(QChar(0x9C), QChar::ReplacementCharacter) + told);
    });
    user.dismiss();
    user.dismiss();
    child<QAction>(*m_window, action)->trigger();
    QVERIFY(user.isFinished());
}

void TestForeignText::whetherToReplaceAFile_data()
{
    addNames();
}

void TestForeignText::whetherToReplaceAFile()
{
    QFETCH(QString, name);
    support::writeFile(name, "mine");
    tellOf(name, "actionSaveAs", QStringLiteral(" already exists.\nDo you want to replace it?"));
    QCOMPARE(support::readFile(name), QByteArray("mine"));
}

void TestForeignText::aFileThatIsMissing_data()
{
    addNames();
}

void TestForeignText::aFileThatIsMissing()
{
    QFETCH(QString, name);
    QFile::remove(name);
    m_window->openFileCmdLine(QStringLiteral("none.mio"));
    m_window->saveFile(QStringLiteral("none.mio")); // or Open would ask whether to keep changes
    tellOf(name, "actionOpen",
           QStringLiteral("\nFile not found.\nPlease verify the correct file name was given."));
}

void TestForeignText::aToolTipInTheFileDialog()
{
    const QString name = QStringLiteral("<img src=pipe>");
    QVERIFY(QDir().mkpath(name));
    support::DialogScript user;
    user.act([&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        dialog->setSidebarUrls({QUrl::fromLocalFile(m_directory.filePath(name))});
        auto* places = dialog->findChild<QListView*>(QStringLiteral("sidebar"));
        const QPoint place = places->visualRect(places->model()->index(0, 0)).center();
        QHelpEvent ask(QEvent::ToolTip, place, places->viewport()->mapToGlobal(place));
        support::Showing showing;
        QCoreApplication::sendEvent(places->viewport(), &ask);
        QCOMPARE(QToolTip::text(), m_directory.filePath(name));
        for (const QWidget* each : QApplication::topLevelWidgets()) {
            if (each->inherits("QTipLabel")) {
                QCOMPARE(qobject_cast<const QLabel*>(each)->textFormat(), Qt::PlainText);
            }
        }
        showing.end(*dialog);
        QToolTip::hideText();
    });
    user.dismiss();
    child<QAction>(*m_window, "actionSaveAs")->trigger();
    QVERIFY(user.isFinished());
}

void TestForeignText::cleanupTestCase()
{
    support::Showing::report();
    QVERIFY(support::Showing::longest() < support::Showing::hang);
    m_pipe.reset();
}

MIOLKA_GUI_TEST_MAIN(TestForeignText)
#include "test_foreigntext.moc"
