// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"

#include "image/filename.h"
#include "image/memoryarea.h"
#include "tests/support/dialogscript.h"
#include "tests/support/guitest.h"
#include "tests/support/offeredimage.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QAction>
#include <QDir>
#include <QTemporaryDir>
#include <QToolBar>

#include <sys/stat.h>

/// New, Open, Save and Save As as a user works them.
class TestSettingsDocument : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void savingAFreshWindowAsksForAName();
    void savingAnOpenFileAsksNothing();
    void openAsksWhetherToKeepChanges();
    void everyNewOrOpenAsksUntilASaveSucceeds();
    void openShowsTheFileAndAppliesItsRecords();
    void openCancelledChangesNothing();
    void aBadThirdLineEndsTheLoad();
    void anUnreadableFileBecomesTheCurrentFile();
    void keepingChangesSavesThemFirst();
    void keepingChangesWithoutANameThenCancelling();
    void keepingChangesThenCancellingBothDialogsOfOpen();
    void everyPathThatIsOpenedIsLogged();
    void newStartsAgainFromTheTemplate();
    void saveAsToANewPathShowsIt();
    void saveAsCancelledChangesNothing();
    void aSaveThatFailsKeepsFileAndFlag();
    void dialogsStartInTheFilesDirectory();
    void commandLineFile();
    void commandLineFileThatIsMissing();
    void commandLineNameThatIsEmpty();
    void commandLineNameThatIsNoUtf8_data();
    void commandLineNameThatIsNoUtf8();
    void commandLineNameInAnUndecodableDirectory();
    void namesWithBlanksAndLetters_data();
    void namesWithBlanksAndLetters();
    void theTitleShowsTheCanonicalPath();
    void theTitleShowsMarksLiterally();
    void bytesOfAnUneditedFileComeBack();
    void shortcuts();
    void toolBarButtons();

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory->filePath(QString::fromUtf8(name));
    }
    void trigger(const char* name)
    {
        m_window->findChild<QAction*>(QString::fromLatin1(name))->trigger();
    }
    [[nodiscard]] cMyMemoryArea& area() const
    {
        return *m_window->findChild<cMyMemoryArea*>(QStringLiteral("settingsImage"));
    }
    [[nodiscard]] QByteArray bytes() const { return support::bytesOf(area()); }
    [[nodiscard]] QString shownPath() const
    {
        const QString prefix = QStringLiteral("MIOLKAsoft v1.0.4.0 --- ");
        const QString title = m_window->windowTitle();
        return title.startsWith(prefix) ? title.mid(prefix.size()) : QString();
    }
    /// A window whose image is stored in this file.
    void openSaved(const char* name)
    {
        m_window->openFileCmdLine(path(name));
        trigger("actionSave");
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<support::DialogScript> m_user;
};

namespace {

const QByteArray fourBytes = ":04000000AABBCCDDEE\n:00000001FF";

QByteArray withFourBytes()
{
    return support::templateImage().replace(0, 4, "\xAA\xBB\xCC\xDD");
}

} // namespace

void TestSettingsDocument::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    support::writeFile(path("four.mio"), fourBytes);
    support::writeFile(path("other.mio"), support::settingsText(support::markedImage('x')));
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    m_user = std::make_unique<support::DialogScript>();
}

void TestSettingsDocument::cleanup()
{
    QTest::qWait(30);
    QVERIFY2(m_user->isFinished(), qPrintable(m_user->unexpected().join(QLatin1Char(','))));
    m_window.reset();
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
}

void TestSettingsDocument::savingAFreshWindowAsksForAName()
{
    QVERIFY(QDir::setCurrent(m_directory->path()));
    m_user->chooseFile(path("new.mio"));
    trigger("actionSave");
    QCOMPARE(m_user->seen().at(0).title, QStringLiteral("Save to file"));
    QCOMPARE(m_user->seen().at(0).directory, QDir::currentPath());
    QCOMPARE(m_user->seen().at(0).filters, QStringList{QStringLiteral("Setup file (*.mio)")});
    QCOMPARE(support::readFile(path("new.mio")), support::settingsText(support::templateImage()));
    QCOMPARE(shownPath(), path("new.mio"));
    QVERIFY(!area().isModified());
}

void TestSettingsDocument::savingAnOpenFileAsksNothing()
{
    m_window->openFileCmdLine(path("four.mio"));
    QVERIFY(area().isModified());
    trigger("actionSave");
    QCOMPARE(support::readFile(path("four.mio")), support::settingsText(withFourBytes()));
    QCOMPARE(shownPath(), path("four.mio"));
    QVERIFY(!area().isModified());
}

void TestSettingsDocument::openAsksWhetherToKeepChanges()
{
    m_user->press(QMessageBox::No);
    m_user->chooseFile(path("other.mio"));
    trigger("actionOpen");
    QCOMPARE(m_user->seen().size(), 2);
    const support::SeenDialog question = m_user->seen().at(0);
    QCOMPARE(question.title, QStringLiteral("Miolka"));
    QCOMPARE(question.text, QStringLiteral("Do you want to save changes?"));
    QCOMPARE(question.buttons, QMessageBox::StandardButtons(QMessageBox::Yes | QMessageBox::No));
    QCOMPARE(m_user->seen().at(1).title, QStringLiteral("Open file"));
    QCOMPARE(m_user->seen().at(1).filters, QStringList{QStringLiteral("Setup file (*.mio)")});
}

void TestSettingsDocument::everyNewOrOpenAsksUntilASaveSucceeds()
{
    for (int round = 0; round < 3; ++round) {
        m_user->press(QMessageBox::No);
        trigger("actionNew");
    }
    openSaved("other.mio");
    QCOMPARE(m_user->seen().size(), 3);
    trigger("actionNew");
    QCOMPARE(m_user->seen().size(), 3);
    m_user->dismiss();
    trigger("actionNew");
    QCOMPARE(m_user->seen().size(), 4);
}

void TestSettingsDocument::openShowsTheFileAndAppliesItsRecords()
{
    m_user->press(QMessageBox::No);
    m_user->chooseFile(path("four.mio"));
    trigger("actionOpen");
    QCOMPARE(bytes(), withFourBytes());
    QCOMPARE(shownPath(), path("four.mio"));
    QVERIFY(area().isModified());
}

void TestSettingsDocument::openCancelledChangesNothing()
{
    openSaved("other.mio");
    m_user->dismiss();
    trigger("actionOpen");
    QCOMPARE(bytes(), support::markedImage('x'));
    QCOMPARE(shownPath(), path("other.mio"));
    QVERIFY(!area().isModified());
}

void TestSettingsDocument::aBadThirdLineEndsTheLoad()
{
    QList<QByteArray> lines = support::settingsText(support::markedImage('x')).split('\n');
    lines[2].replace(40, 2, "00");
    support::writeFile(path("bad.mio"), lines.join('\n'));
    m_user->press(QMessageBox::No);
    m_user->chooseFile(path("bad.mio"));
    trigger("actionOpen");
    QCOMPARE(bytes(), support::templateImage().replace(0, 32, support::markedImage('x').left(32)));
    QCOMPARE(shownPath(), path("bad.mio"));
}

void TestSettingsDocument::anUnreadableFileBecomesTheCurrentFile()
{
    openSaved("other.mio");
    QVERIFY(support::letOthersIn(m_directory->path()));
    QCOMPARE(chmod(path("four.mio").toUtf8().constData(), 0), 0);
    {
        const support::WithoutPrivileges nobody;
        m_user->chooseFile(path("four.mio"));
        trigger("actionOpen");
    }
    QCOMPARE(bytes(), support::markedImage('x'));
    QVERIFY(!area().isModified());
    QCOMPARE(shownPath(), path("four.mio"));
}

void TestSettingsDocument::keepingChangesSavesThemFirst()
{
    openSaved("other.mio");
    area().setData(0, 'y');
    m_user->press(QMessageBox::Yes);
    m_user->chooseFile(path("four.mio"));
    trigger("actionOpen");
    QCOMPARE(support::readFile(path("other.mio")),
             support::settingsText(support::markedImage('x').replace(0, 1, "y")));
    QCOMPARE(shownPath(), path("four.mio"));
}

void TestSettingsDocument::keepingChangesWithoutANameThenCancelling()
{
    area().setData(0, 'y');
    m_user->press(QMessageBox::Yes);
    m_user->dismiss();
    trigger("actionNew");
    QCOMPARE(m_user->seen().at(1).title, QStringLiteral("Save to file"));
    QCOMPARE(bytes(), support::templateImage());
}

void TestSettingsDocument::keepingChangesThenCancellingBothDialogsOfOpen()
{
    m_user->press(QMessageBox::Yes);
    m_user->dismiss();
    m_user->chooseFile(path("other.mio"));
    trigger("actionOpen");
    QCOMPARE(m_user->seen().at(1).title, QStringLiteral("Save to file"));
    QCOMPARE(m_user->seen().at(2).title, QStringLiteral("Open file"));
    QCOMPARE(shownPath(), path("other.mio"));
    QCOMPARE(bytes(), support::markedImage('x'));
}

void TestSettingsDocument::everyPathThatIsOpenedIsLogged()
{
    openSaved("four.mio");
    const QString file = path("other.mio");
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QLatin1Char('"') + file + QLatin1Char('"')));
    m_user->chooseFile(file);
    trigger("actionOpen");
    trigger("actionSave");
    QTest::ignoreMessage(QtDebugMsg, "\":/pliki/clear.mio\"");
    trigger("actionNew");
}

void TestSettingsDocument::newStartsAgainFromTheTemplate()
{
    openSaved("other.mio");
    trigger("actionNew");
    QCOMPARE(bytes(), support::templateImage());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0"));
    m_user->dismiss();
    trigger("actionSave");
    QCOMPARE(m_user->seen().at(0).title, QStringLiteral("Save to file"));
}

void TestSettingsDocument::saveAsToANewPathShowsIt()
{
    openSaved("other.mio");
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("sub")));
    QVERIFY(QFile::link(path("sub"), path("short")));
    m_user->chooseFile(path("short/copy.mio"));
    trigger("actionSaveAs");
    QCOMPARE(shownPath(), path("sub/copy.mio"));
    QCOMPARE(support::readFile(path("sub/copy.mio")), support::readFile(path("other.mio")));
}

void TestSettingsDocument::saveAsCancelledChangesNothing()
{
    m_window->openFileCmdLine(path("other.mio"));
    m_user->dismiss();
    trigger("actionSaveAs");
    QCOMPARE(shownPath(), path("other.mio"));
    QVERIFY(area().isModified());
}

void TestSettingsDocument::aSaveThatFailsKeepsFileAndFlag()
{
    m_window->openFileCmdLine(path("other.mio"));
    QCOMPARE(mkfifo(path("fifo").toUtf8().constData(), 0600), 0);
    m_user->chooseFile(path("fifo"));
    m_user->press(QMessageBox::Yes); // the file dialog's own: replace it?
    trigger("actionSaveAs");
    QCOMPARE(shownPath(), path("other.mio"));
    QVERIFY(area().isModified());
    QVERIFY(!m_window->saveFile(path("fifo")));
    QVERIFY(m_window->saveFile(path("copy.mio")));
    QVERIFY(!area().isModified());
}

void TestSettingsDocument::dialogsStartInTheFilesDirectory()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("sub")));
    support::writeFile(path("sub/a.mio"), fourBytes);
    m_window->openFileCmdLine(path("sub/a.mio"));
    m_user->dismiss();
    trigger("actionSaveAs");
    m_user->press(QMessageBox::No);
    m_user->dismiss();
    trigger("actionOpen");
    QCOMPARE(m_user->seen().at(0).directory, path("sub"));
    QCOMPARE(m_user->seen().at(2).directory, path("sub"));
}

void TestSettingsDocument::commandLineFile()
{
    m_window->openFileCmdLine(path("four.mio"));
    QCOMPARE(bytes(), withFourBytes());
    QCOMPARE(shownPath(), path("four.mio"));
}

void TestSettingsDocument::commandLineFileThatIsMissing()
{
    m_window->openFileCmdLine(path("missing.mio"));
    QCOMPARE(bytes(), support::templateImage());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0"));
    trigger("actionSave");
    QCOMPARE(support::readFile(path("missing.mio")),
             support::settingsText(support::templateImage()));
    QCOMPARE(shownPath(), path("missing.mio"));
}

void TestSettingsDocument::commandLineNameThatIsEmpty()
{
    m_window->openFileCmdLine(path("four.mio"));
    m_window->openFileCmdLine(QString());
    QCOMPARE(bytes(), withFourBytes());
    QCOMPARE(shownPath(), path("four.mio"));
}

void TestSettingsDocument::commandLineNameThatIsNoUtf8_data()
{
    QTest::addColumn<bool>("isRelative");
    QTest::newRow("absolute") << false;
    QTest::newRow("relative") << true;
}

void TestSettingsDocument::commandLineNameThatIsNoUtf8()
{
    QFETCH(bool, isRelative);
    for (const char* lookalike : {"a?.mio", "a\xEF\xBF\xBD.mio"}) {
        support::writeFile(path(lookalike), fourBytes);
    }
    const QStringList before = QDir(m_directory->path()).entryList();
    QVERIFY(QDir::setCurrent(m_directory->path()));
    const QString name = isRelative ? QStringLiteral("a") : path("a");
    m_window->openFileCmdLine(image::decodeFileName(name.toUtf8() + "\xFF.mio"));
    QCOMPARE(bytes(), support::templateImage());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0"));
    m_user->dismiss();
    trigger("actionSave");
    QCOMPARE(m_user->seen().at(0).title, QStringLiteral("Save to file"));
    QCOMPARE(QDir(m_directory->path()).entryList(), before);
    QVERIFY(area().isModified());
}

void TestSettingsDocument::commandLineNameInAnUndecodableDirectory()
{
    const QByteArray before = QDir::currentPath().toUtf8();
    const QByteArray directory = path("d").toUtf8() + "\xFF";
    QCOMPARE(mkdir(directory.constData(), 0777), 0);
    support::writeRawFile(directory + "/f.mio", fourBytes);
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("d\uFFFD")));
    support::writeFile(path("d\xEF\xBF\xBD/f.mio"), fourBytes);
    QCOMPARE(chdir(directory.constData()), 0);
    m_window->openFileCmdLine(QStringLiteral("f.mio"));
    m_user->dismiss();
    trigger("actionSave");
    QCOMPARE(chdir(before.constData()), 0);
    QCOMPARE(m_user->seen().at(0).title, QStringLiteral("Save to file"));
    QCOMPARE(support::readFile(path("d\xEF\xBF\xBD/f.mio")), fourBytes);
    QCOMPARE(unlink((directory + "/f.mio").constData()), 0);
    QCOMPARE(rmdir(directory.constData()), 0);
}

void TestSettingsDocument::namesWithBlanksAndLetters_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral("my dive settings.mio");
    QTest::newRow("Polish") << QStringLiteral("żółw głębinowy.mio");
    QTest::newRow("Japanese") << QStringLiteral("潜水.mio");
    QTest::newRow("beyond the first plane") << QString::fromUtf8("\xF0\x9F\x90\xA0.mio");
    QTest::newRow("markup") << QStringLiteral("<b>a & b.mio");
    QTest::newRow("percent") << QStringLiteral("100%1 %FF.mio");
}

void TestSettingsDocument::namesWithBlanksAndLetters()
{
    QFETCH(QString, name);
    m_user->chooseFile(m_directory->filePath(name));
    trigger("actionSaveAs");
    QCOMPARE(shownPath(), m_directory->filePath(name));
    QVERIFY(QFile::exists(m_directory->filePath(name)));
    area().setData(0, 9);
    m_window->openFileCmdLine(m_directory->filePath(name));
    QCOMPARE(bytes(), support::templateImage());
}

void TestSettingsDocument::theTitleShowsTheCanonicalPath()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("sub")));
    QVERIFY(QFile::link(path("four.mio"), path("sub/link.mio")));
    m_window->openFileCmdLine(path("sub/../sub/./link.mio"));
    QCOMPARE(shownPath(), path("four.mio"));
}

void TestSettingsDocument::theTitleShowsMarksLiterally()
{
    support::writeFile(path("a[*].mio"), fourBytes);
    m_window->openFileCmdLine(path("a[*].mio"));
    // Doubled for Qt, which shows the pair as one.
    QCOMPARE(shownPath(), path("a[*][*].mio"));
}

void TestSettingsDocument::bytesOfAnUneditedFileComeBack()
{
    QRandomGenerator random(1004);
    support::writeFile(path("random.mio"), support::settingsText(support::offeredImage(random)));
    m_user->press(QMessageBox::No);
    m_user->chooseFile(path("random.mio"));
    trigger("actionOpen");
    m_user->chooseFile(path("copy.mio"));
    trigger("actionSaveAs");
    QCOMPARE(support::readFile(path("copy.mio")), support::readFile(path("random.mio")));
}

void TestSettingsDocument::shortcuts()
{
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), key, modifiers);
    };
    m_user->chooseFile(path("copy.mio"));
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(shownPath(), path("copy.mio"));
    m_user->chooseFile(path("other.mio"));
    press(Qt::Key_O);
    QCOMPARE(shownPath(), path("other.mio"));
    press(Qt::Key_S);
    QVERIFY(!area().isModified());
    press(Qt::Key_N);
    QCOMPARE(bytes(), support::templateImage());
    press(Qt::Key_Q);
    QVERIFY(!m_window->isVisible());
}

void TestSettingsDocument::toolBarButtons()
{
    const auto* bar = m_window->findChild<QToolBar*>(QStringLiteral("mainToolBar"));
    const auto click = [this, bar](const char* name) {
        QTest::mouseClick(
            bar->widgetForAction(m_window->findChild<QAction*>(QString::fromLatin1(name))),
            Qt::LeftButton);
    };
    m_user->press(QMessageBox::No);
    m_user->chooseFile(path("other.mio"));
    click("actionOpen");
    QCOMPARE(shownPath(), path("other.mio"));
    area().setData(0, 'y');
    click("actionSave");
    QCOMPARE(support::readFile(path("other.mio")),
             support::settingsText(support::markedImage('x').replace(0, 1, "y")));
    m_user->chooseFile(path("copy.mio"));
    click("actionSaveAs");
    QCOMPARE(shownPath(), path("copy.mio"));
    click("actionNew");
    QCOMPARE(bytes(), support::templateImage());
    click("actionExit");
    QVERIFY(!m_window->isVisible());
}

MIOLKA_GUI_TEST_MAIN(TestSettingsDocument)
#include "test_settingsdocument.moc"
