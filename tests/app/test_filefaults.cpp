// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/brokendisk.h"
#include "tests/support/dialogscript.h"
#include "tests/support/pipetrap.h"
#include "tests/support/savedfiles.h"
#include "tests/support/skipped.h"
#include "tests/support/smalldisk.h"
#include "tests/support/windowtest.h"

#include <QLineEdit>

#include <functional>
#include <optional>

using support::child;

/// What another program does to the file with this path.
using Change = std::function<void(const QString& file)>;
Q_DECLARE_METATYPE(Change)

/// What becomes of the open file while it is open: disks that take nothing, other programs that
/// put something else in its place, places that are gone.
class TestFileFaults : public QObject
{
    Q_OBJECT

public:
    /// Whether a disk could not be mounted, so that something was not tested.
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void init();
    void cleanup();
    void aDiskThatIsFullAtEveryByte();
    void aDirectoryThatTakesNoFile();
    void aDiskThatIsWriteProtected();
    void anotherProgramsFile_data();
    void anotherProgramsFile();
    void somethingThatIsNoFile_data();
    void somethingThatIsNoFile();
    void aDirectoryThatIsGone_data();
    void aDirectoryThatIsGone();
    void aWorkingDirectoryThatIsGone();
    void aDiskThatIsTakenOut();
    void closingWithoutTheDirectory();

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory->filePath(QString::fromUtf8(name));
    }
    void trigger(const char* action) const { child<QAction>(*m_window, action)->trigger(); }
    /// The window with a file open that has changes in it.
    void openAndEdit(const QString& file)
    {
        support::writeFile(file, support::settingsText(support::markedImage('o')));
        m_window->openFileCmdLine(file);
        trigger("actionSave");
        edit();
    }
    void edit() { support::settingsImage(*m_window)->setData(0, 'y'); }
    [[nodiscard]] bool isModified() const
    {
        return support::settingsImage(*m_window)->isModified();
    }
    [[nodiscard]] QString shownPath() const
    {
        return m_window->windowTitle().section(QStringLiteral(" --- "), 1);
    }
    /// Opens the file by hand, without keeping changes.
    void reopen(const QString& file)
    {
        if (isModified()) {
            m_user->press(QMessageBox::No);
        }
        m_user->chooseFile(file);
        trigger("actionOpen");
        QVERIFY(m_user->isFinished());
    }
    /// Where that action's file dialog begins, and what name it proposes.
    std::pair<QString, QString> beginningOf(const char* action);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<support::DialogScript> m_user;
    bool m_wasSkipped = false;
};

namespace {

QByteArray editedText()
{
    return support::settingsText(support::markedImage('o').replace(0, 1, "y"));
}

} // namespace

void TestFileFaults::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    m_user = std::make_unique<support::DialogScript>();
}

void TestFileFaults::cleanup()
{
    QTest::qWait(30);
    QVERIFY2(m_user->isFinished(), qPrintable(m_user->unexpected().join(QLatin1Char(','))));
    m_window.reset();
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
}

std::pair<QString, QString> TestFileFaults::beginningOf(const char* action)
{
    QString name;
    if (QLatin1String(action) == QLatin1String("actionOpen") && isModified()) {
        m_user->press(QMessageBox::No);
    }
    m_user->act([&name] {
        name = QApplication::activeModalWidget()
                   ->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                   ->text();
    });
    m_user->dismiss();
    trigger(action);
    return {m_user->seen().constLast().directory, name};
}

void TestFileFaults::aDiskThatIsFullAtEveryByte()
{
    const QString file = path("settings.mio");
    openAndEdit(file);
    const QByteArray before = support::readFile(file);
    support::DiskFault fault;
    for (fault.room = 0; fault.room < editedText().size(); ++fault.room) {
        {
            const support::BrokenDisk disk(fault);
            trigger("actionSave");
            QVERIFY(support::BrokenDisk::failures() > 0);
        }
        QCOMPARE(support::readFile(file), before);
        QVERIFY(isModified());
        QCOMPARE(shownPath(), file);
        QCOMPARE(support::entriesOf(m_directory->path()).size(), 1);
    }
    trigger("actionSave");
    QCOMPARE(support::readFile(file), editedText());
    QVERIFY(!isModified());
}

void TestFileFaults::aDirectoryThatTakesNoFile()
{
    const QString file = path("settings.mio");
    openAndEdit(file);
    QCOMPARE(chmod(file.toUtf8().constData(), 0666), 0);
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0555), 0);
    {
        const support::WithoutPrivileges nobody;
        m_user->chooseFile(path("copy.mio"));
        trigger("actionSaveAs");
        QVERIFY(isModified());
        QCOMPARE(shownPath(), file);
        trigger("actionSave"); // the file itself may be written
    }
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0755), 0);
    QVERIFY(!isModified());
    QCOMPARE(support::readFile(file), editedText());
    QCOMPARE(support::entriesOf(m_directory->path()).size(), 1);
}

void TestFileFaults::aDiskThatIsWriteProtected()
{
    support::SmallDisk disk(path("disk"), "size=64k");
    if (!disk.isMounted()) {
        m_wasSkipped = true;
        QSKIP("a tmpfs cannot be mounted here: saving on a protected disk was not run");
    }
    const QString file = path("disk/settings.mio");
    openAndEdit(file);
    const QByteArray before = support::readFile(file);
    QVERIFY(disk.protect());
    trigger("actionSave");
    m_user->chooseFile(path("disk/copy.mio"));
    trigger("actionSaveAs");
    QVERIFY(isModified());
    QCOMPARE(shownPath(), file);
    QCOMPARE(support::readFile(file), before);
    QCOMPARE(support::entriesOf(path("disk")).size(), 1);
    // There is another way out.
    m_user->chooseFile(path("elsewhere.mio"));
    trigger("actionSaveAs");
    QVERIFY(!isModified());
    QCOMPARE(support::readFile(path("elsewhere.mio")), editedText());
    QCOMPARE(shownPath(), path("elsewhere.mio"));
}

void TestFileFaults::anotherProgramsFile_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) {
        QTest::newRow(name) << change;
    };
    row("renamed over it", [](const QString& file) {
        support::writeFile(file + QLatin1Char('~'), "theirs");
        QVERIFY(QFile::remove(file) && QFile::rename(file + QLatin1Char('~'), file));
    });
    row("truncated", [](const QString& file) { support::writeFile(file, {}); });
    row("made longer",
        [](const QString& file) { support::writeFile(file, QByteArray(100000, 'x')); });
    row("deleted", [](const QString& file) { QVERIFY(QFile::remove(file)); });
    row("deleted and made again", [](const QString& file) {
        QVERIFY(QFile::remove(file));
        support::writeFile(file, "theirs");
    });
    row("a link to another", [](const QString& file) {
        QVERIFY(QFile::rename(file, file + QLatin1Char('2')));
        QVERIFY(QFile::link(file + QLatin1Char('2'), file));
    });
    row("a link to none", [](const QString& file) {
        QVERIFY(QFile::remove(file) && QFile::link(file + QLatin1Char('2'), file));
    });
    row("a second name for it", [](const QString& file) {
        QCOMPARE(link(file.toUtf8().constData(), (file + QLatin1Char('2')).toUtf8().constData()),
                 0);
    });
}

void TestFileFaults::anotherProgramsFile()
{
    QFETCH(Change, change);
    const QString file = path("settings.mio");
    openAndEdit(file);
    change(file);
    const bool isLink = QFileInfo(file).isSymLink();
    trigger("actionSave");
    QVERIFY(!isModified());
    QCOMPARE(support::readFile(file), editedText());
    QCOMPARE(QFileInfo(file).isSymLink(), isLink);
    QCOMPARE(shownPath(), QFileInfo(file).canonicalFilePath());
    QVERIFY(support::entriesOf(m_directory->path()).size() <= 2);
    edit();
    support::settingsImage(*m_window)->setData(4, 'z');
    reopen(file);
    QCOMPARE(support::settingsText(support::imageOf(*m_window)), editedText());
}

void TestFileFaults::somethingThatIsNoFile_data()
{
    QTest::addColumn<QString>("what");
    for (const char* what : {"directory", "pipe", "link to itself", "link to a pipe"}) {
        QTest::newRow(what) << QString::fromLatin1(what);
    }
}

void TestFileFaults::somethingThatIsNoFile()
{
    QFETCH(QString, what);
    const QString file = path("settings.mio");
    openAndEdit(file);
    QVERIFY(QFile::remove(file));
    std::optional<support::PipeTrap> pipe;
    if (what == QLatin1String("directory")) {
        QVERIFY(QDir().mkpath(file + QStringLiteral("/inside")));
    } else if (what == QLatin1String("pipe")) {
        pipe.emplace(file);
    } else if (what == QLatin1String("link to itself")) {
        QVERIFY(QFile::link(file, file));
    } else {
        pipe.emplace(path("pipe"));
        QVERIFY(QFile::link(path("pipe"), file));
    }
    const QStringList before = support::entriesOf(m_directory->path());
    const QByteArray edited = support::imageOf(*m_window);
    trigger("actionSave");
    QVERIFY(isModified());
    QCOMPARE(support::entriesOf(m_directory->path()), before);
    // Opened again it gives nothing, and takes nothing away.
    m_window->openFileCmdLine(file);
    QCOMPARE(support::imageOf(*m_window), edited);
    QVERIFY(isModified());
    QVERIFY(!pipe || !pipe->wasOpened());
    m_user->chooseFile(path("elsewhere.mio"));
    trigger("actionSaveAs");
    QCOMPARE(support::readFile(path("elsewhere.mio")), editedText());
    QVERIFY(!isModified());
    pipe.reset();
}

void TestFileFaults::aDirectoryThatIsGone_data()
{
    QTest::addColumn<bool>("isRenamed");
    QTest::newRow("removed") << false;
    QTest::newRow("renamed") << true;
}

void TestFileFaults::aDirectoryThatIsGone()
{
    QFETCH(bool, isRenamed);
    QVERIFY(QDir().mkpath(path("a/b/c")));
    const QString file = path("a/b/c/settings.mio");
    openAndEdit(file);
    const QByteArray before = support::readFile(file);
    if (isRenamed) {
        QVERIFY(QDir().rename(path("a/b"), path("a/else")));
    } else {
        QVERIFY(QDir(path("a/b")).removeRecursively());
    }
    trigger("actionSave");
    QVERIFY(isModified());
    QVERIFY(!QFile::exists(path("a/b")));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0"));
    // Dialogs begin in what is left of the way there, and propose no name.
    m_window->portChanged(QStringLiteral("ttyACM0")); // or there would be no library to send
    for (const char* action : {"actionSaveAs", "actionOpen", "actionLibraryUpdate"}) {
        const auto [directory, name] = beginningOf(action);
        QCOMPARE(directory, path("a"));
        QVERIFY2(name.isEmpty(), action);
    }
    QVERIFY(isModified());
    // It is back again.
    if (isRenamed) {
        QVERIFY(QDir().rename(path("a/else"), path("a/b")));
        QCOMPARE(support::readFile(file), before);
    } else {
        QVERIFY(QDir().mkpath(path("a/b/c")));
    }
    trigger("actionSave");
    QVERIFY(!isModified());
    QCOMPARE(support::readFile(file), editedText());
    QCOMPARE(shownPath(), file);
}

void TestFileFaults::aWorkingDirectoryThatIsGone()
{
    QVERIFY(QDir().mkpath(path("here")));
    QVERIFY(QDir::setCurrent(path("here")));
    openAndEdit(QStringLiteral("settings.mio"));
    QVERIFY(QDir(path("here")).removeRecursively());
    trigger("actionSave");
    QVERIFY(isModified());
    QVERIFY(!QFile::exists(QStringLiteral("/settings.mio")));
    m_user->chooseFile(path("elsewhere.mio"));
    trigger("actionSaveAs");
    QCOMPARE(support::readFile(path("elsewhere.mio")), editedText());
    QVERIFY(!isModified());
}

void TestFileFaults::aDiskThatIsTakenOut()
{
    support::SmallDisk disk(path("disk"), "size=64k");
    if (!disk.isMounted()) {
        m_wasSkipped = true;
        QSKIP("a tmpfs cannot be mounted here: a disk that is taken out was not run");
    }
    QVERIFY(QDir().mkpath(path("disk/dives")));
    openAndEdit(path("disk/dives/settings.mio"));
    disk.takeOut();
    trigger("actionSave");
    QVERIFY(isModified());
    QVERIFY(support::entriesOf(path("disk")).isEmpty());
    QCOMPARE(beginningOf("actionSaveAs"), std::pair(path("disk"), QString()));
    m_user->chooseFile(path("elsewhere.mio"));
    trigger("actionSaveAs");
    QCOMPARE(support::readFile(path("elsewhere.mio")), editedText());
    QVERIFY(!isModified());
}

void TestFileFaults::closingWithoutTheDirectory()
{
    QVERIFY(QDir().mkpath(path("a")));
    openAndEdit(path("a/settings.mio"));
    QVERIFY(QDir(path("a")).removeRecursively());
    QVERIFY(m_window->close());
    QVERIFY(m_user->seen().isEmpty());
    QVERIFY(!QFile::exists(path("a")));
}

int main(int argc, char* argv[])
{
    support::enterNamespaceUnlessRoot();
    app::prepare();
    QApplication application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    TestFileFaults test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_filefaults.moc"
