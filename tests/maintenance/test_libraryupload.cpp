// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/libraryfile.h"
#include "tests/device/devicewindowtest.h"
#include "tests/support/dialogscript.h"
#include "tests/support/posix.h"

#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

using support::child;

/// A sound library goes to the device, from the user's seat.
class TestLibraryUpload : public support::DeviceWindowTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void withoutADeviceThereIsNoUpload();
    void whatIsAsked();
    void theDialogBeginsBesideTheSettings();
    void whatIsRefusedSendsNothing_data();
    void whatIsRefusedSendsNothing();
    void theLinesOfTheFileAreSent();
    void wordsThatAreNoRecordsAreSentToo();
    void anEmptyFileIsAnExchangeOfFourLines();
    void theProgressDialog();
    void answersChangeNothingInTheSettings();
    void aFileThatIsGoneWhenItIsConfirmed();
    void aFileThatIsTooLarge();
    void cancelling();
    void aVanishedDevice();
    void theDeviceGoesWhileAsked();
    void aSecondUploadRightAfterTheFirst();
    void anUploadAfterOneThatCouldNotStart();
    void settingsAreWrittenAfterAnUpload();
    void closingTheWindow();
    void aQuestionWithoutAnAnswer(); // last: no loop runs any more afterwards

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory.filePath(QString::fromLatin1(name));
    }

    /// The file is chosen and the question answered; what went on is left standing.
    QVector<support::SeenDialog> upload(const QString& file)
    {
        support::DialogScript user;
        user.chooseFile(file);
        user.press(QMessageBox::Yes);
        trigger("actionLibraryUpdate");
        if (!user.isFinished()) {
            qFatal("not asked as expected");
        }
        return user.seen();
    }

    /// Waits until so many lines have come.
    static bool waitForLines(const support::Peer& peer, QStringList::size_type count)
    {
        return support::waitFor([&] { return peer.lines().size() >= count; });
    }

    [[nodiscard]] static QStringList withWords(const QStringList& lines)
    {
        return QStringList{QStringLiteral("#ROOT"), QStringLiteral("#HEX"),
                           QStringLiteral("#FLASH"), QStringLiteral("#WRITE")} +
               lines;
    }

    QTemporaryDir m_directory;
    QStringList m_records;
};

void TestLibraryUpload::initTestCase()
{
    constexpr int recordCount = 50;
    for (int i = 0; i < recordCount; ++i) {
        m_records += QStringLiteral(":01%1000100").arg(i, 4, 16, QLatin1Char('0')).toUpper();
    }
    m_records += QStringLiteral(":00000001FF");
    support::writeFile(path("library.mia"), m_records.join(QLatin1String("\r\n")).toLatin1());
    support::writeFile(path("messages.mic"), ":00000001FF\n");
}

void TestLibraryUpload::withoutADeviceThereIsNoUpload()
{
    const auto* action = child<QAction>(*m_window, "actionLibraryUpdate");
    QVERIFY(!action->isEnabled());
    plugIn();
    QVERIFY(action->isEnabled());
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(box() != nullptr);
    box()->close();
    QVERIFY(!action->isEnabled());
}

void TestLibraryUpload::whatIsAsked()
{
    plugIn();
    const auto seen = upload(path("library.mia"));
    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen.first().title, QStringLiteral("Open file"));
    QCOMPARE(seen.first().filters,
             QStringList({"Sound library (*.mia)", "Custom messages library (*.mic)"}));
    QCOMPARE(seen.first().directory, QDir::currentPath());
    QCOMPARE(seen.last().title, QStringLiteral("Sound library update..."));
    QCOMPARE(seen.last().text,
             QStringLiteral("The sound library will be updated.\nDo you want to continue?"));
    QCOMPARE(seen.last().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(seen.last().icon, QMessageBox::Question);
    QVERIFY(!seen.last().hasDefaultButton);
    for (const support::SeenDialog& dialog : seen) {
        QCOMPARE(dialog.parent, m_window.get());
    }
    QCOMPARE(QApplication::overrideCursor(), nullptr);
}

void TestLibraryUpload::theDialogBeginsBesideTheSettings()
{
    plugIn();
    const QString settings = path("settings.mio");
    support::writeFile(settings, support::settingsText(support::markedImage('s')));
    m_window->openFileCmdLine(settings);
    QCOMPARE(upload(path("messages.mic")).first().directory, QFileInfo(settings).path());
}

void TestLibraryUpload::whatIsRefusedSendsNothing_data()
{
    QTest::addColumn<int>("dialogs");
    QTest::newRow("no file") << 1;
    QTest::newRow("No") << 2;
    QTest::newRow("Escape") << 3;
}

void TestLibraryUpload::whatIsRefusedSendsNothing()
{
    QFETCH(int, dialogs);
    const support::Peer& peer = plugIn();
    support::DialogScript user;
    if (dialogs > 1) {
        user.chooseFile(path("library.mia"));
    }
    if (dialogs == 2) {
        user.press(QMessageBox::No);
    } else {
        user.dismiss();
    }
    trigger("actionLibraryUpdate");
    QTest::qWait(50);
    QVERIFY(user.isFinished());
    QVERIFY(progress() == nullptr);
    QVERIFY(peer.lines().isEmpty());
}

void TestLibraryUpload::theLinesOfTheFileAreSent()
{
    const support::Peer& peer = plugIn();
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, m_records.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    QCOMPARE(peer.lines(), withWords(m_records));
}

void TestLibraryUpload::wordsThatAreNoRecordsAreSentToo()
{
    const support::Peer& peer = plugIn();
    support::writeFile(path("junk.mia"), ":00 caf\xE9\n\n:zz #OFF\n:00000001FF\nmore");
    upload(path("junk.mia"));
    const QStringList words{":00", QString::fromLatin1("caf\xE9"), ":zz", "#OFF", ":00000001FF"};
    QVERIFY(waitForLines(peer, words.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    QCOMPARE(peer.lines(), withWords(words));
}

void TestLibraryUpload::anEmptyFileIsAnExchangeOfFourLines()
{
    const support::Peer& peer = plugIn();
    support::writeFile(path("empty.mia"), {});
    upload(path("empty.mia"));
    QVERIFY(waitForLines(peer, 4));
    QTRY_VERIFY(progress() == nullptr);
    QTest::qWait(50);
    QCOMPARE(peer.lines(), withWords({}));
}

void TestLibraryUpload::theProgressDialog()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(10);
    upload(path("library.mia"));
    QVERIFY(progress() != nullptr); // from the first moment on
    QCOMPARE(progress()->labelText(),
             QStringLiteral("Please don't disconnect your device during the process."));
    QCOMPARE(progress()->findChild<QPushButton*>()->text(), QStringLiteral("Cancel"));
    QCOMPARE(qMakePair(progress()->minimum(), progress()->maximum()), qMakePair(0, 100));
    QCOMPARE(progress()->windowModality(), Qt::WindowModal);
    QVERIFY(progress()->autoClose() && progress()->autoReset());
    QVERIFY(progress()->testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(progress()->minimumDuration(), 0);
    QCOMPARE(progress()->parentWidget(), m_window.get());
    QTRY_COMPARE(progress()->value(), 9);
    QCOMPARE(qMakePair(progress()->minimum(), progress()->maximum()),
             qMakePair(0, static_cast<int>(m_records.size()) + 4));
}

void TestLibraryUpload::answersChangeNothingInTheSettings()
{
    support::Peer& peer = plugIn();
    const QByteArray before = support::imageOf(*m_window);
    QVERIFY(m_window->saveFile(path("before.mio"))); // so that nothing is marked as changed
    // A device that answers as if it were read.
    peer.setAnswer([](const QByteArray& line) {
        return line.startsWith(':') ? QByteArray(":0100000041BE\r\n") : QByteArray("#EEPROM\r\n");
    });
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, m_records.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    QCOMPARE(support::imageOf(*m_window), before);
    QVERIFY(!support::settingsImage(*m_window)->isModified());
}

void TestLibraryUpload::aFileThatIsGoneWhenItIsConfirmed()
{
    const support::Peer& peer = plugIn();
    const QString file = path("gone.mia");
    support::writeFile(file, ":00000001FF\n");
    support::DialogScript user;
    user.chooseFile(file);
    user.act([&file] { QFile::remove(file); });
    user.press(QMessageBox::Yes);
    trigger("actionLibraryUpdate");
    QTest::qWait(50);
    QVERIFY(!QFile::exists(file));
    QVERIFY(user.isFinished()); // nothing is said
    QVERIFY(progress() == nullptr);
    QVERIFY(peer.lines().isEmpty());
}

void TestLibraryUpload::aFileThatIsTooLarge()
{
    const support::Peer& peer = plugIn();
    QFile file(path("large.mia"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(maintenance::largestLibraryFile + 1));
    support::DialogScript user;
    user.chooseFile(file.fileName());
    user.press(QMessageBox::Yes);
    user.press(QMessageBox::Ok);
    trigger("actionLibraryUpdate");
    QVERIFY(user.isFinished());
    QCOMPARE(user.seen().last().title, QStringLiteral("Error"));
    QCOMPARE(user.seen().last().icon, QMessageBox::Critical);
    QCOMPARE(user.seen().last().parent, m_window.get());
    QCOMPARE(user.seen().last().text,
             QStringLiteral("This file is too large for a sound library."));
    QVERIFY(progress() == nullptr);
    QTest::qWait(50);
    QVERIFY(peer.lines().isEmpty());
}

void TestLibraryUpload::cancelling()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(10);
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, 10));
    progress()->findChild<QPushButton*>()->click();
    QVERIFY(progress() == nullptr);
    peer.send("late\r\n");
    QTRY_COMPARE(peer.lines().last(), QStringLiteral("#ROOT"));
    QCOMPARE(peer.lines().size(), 11);
    // The next one is whole.
    peer.setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    peer.forgetLines();
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, m_records.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    QCOMPARE(peer.lines(), withWords(m_records));
}

void TestLibraryUpload::aVanishedDevice()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(20);
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, 20));
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(progress() == nullptr);
    QTRY_VERIFY(box() != nullptr);
    QCOMPARE(box()->windowTitle(), QStringLiteral("Error"));
    box()->close();
    QCOMPARE(
        m_window->statusBar()->currentMessage(),
        QStringLiteral("The connection to the Miolka was lost before the transfer was complete."));
    QVERIFY(!child<QAction>(*m_window, "actionLibraryUpdate")->isEnabled());
    const support::Peer& again = plugIn();
    upload(path("library.mia"));
    QVERIFY(waitForLines(again, m_records.size() + 4));
    QCOMPARE(again.lines(), withWords(m_records));
}

void TestLibraryUpload::theDeviceGoesWhileAsked()
{
    plugIn();
    {
        support::DialogScript user;
        user.chooseFile(path("library.mia"));
        user.act([this] { m_ports->unplug(QStringLiteral("ttyACM0")); });
        user.press(QMessageBox::Ok, QStringLiteral("Error"));
        user.press(QMessageBox::Yes, QStringLiteral("Sound library update..."));
        trigger("actionLibraryUpdate");
    }
    QTRY_VERIFY(box() != nullptr);
    QCOMPARE(box()->windowTitle(), QStringLiteral("Error"));
    box()->close();
    // The progress waits for the user, who has nothing else to cancel.
    QVERIFY(progress() != nullptr);
    progress()->findChild<QPushButton*>()->click();
    QVERIFY(progress() == nullptr);
    QVERIFY(m_window->isEnabled());
}

void TestLibraryUpload::aSecondUploadRightAfterTheFirst()
{
    support::Peer& peer = plugIn();
    upload(path("library.mia"));
    const QPointer<QProgressDialog> firstDialog = progress();
    QVERIFY(waitForLines(peer, m_records.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    upload(path("messages.mic"));
    const QPointer<QProgressDialog> secondDialog = progress();
    QVERIFY(firstDialog.isNull() || !firstDialog->isVisible());
    QVERIFY(waitForLines(peer, m_records.size() + 4 + 5));
    QTRY_VERIFY(progress() == nullptr);
    QCOMPARE(peer.lines(), withWords(m_records) + withWords({QStringLiteral(":00000001FF")}));
    QTRY_VERIFY(firstDialog.isNull());
    QVERIFY(m_window->findChildren<QProgressDialog*>().size() <= 1);
    // However many there were before, each answer moves the bar once.
    peer.fallSilentAt(10);
    upload(path("library.mia"));
    int changes = 0;
    connect(progress()->findChild<QProgressBar*>(), &QProgressBar::valueChanged, this,
            [&changes] { ++changes; });
    QTRY_COMPARE(progress()->value(), 9);
    QCOMPARE(changes, 9);
}

void TestLibraryUpload::anUploadAfterOneThatCouldNotStart()
{
    plugIn();
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(box() != nullptr);
    box()->close();
    m_window->readSettingsFromMiolka();
    QTRY_VERIFY(box() != nullptr);
    box()->close();
    const QPointer<QProgressDialog> left = progress();
    QVERIFY(!left.isNull());
    left->findChild<QPushButton*>()->click();
    support::Peer& peer = m_ports->plug(QStringLiteral("ttyACM0"));
    // What was cancelled then ends the first query instead.
    QTRY_VERIFY(peer.lines().contains(QStringLiteral("#ROOT")));
    QTest::qWait(300);
    peer.forgetLines();
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, m_records.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    QTRY_VERIFY(left.isNull());
    QCOMPARE(peer.lines(), withWords(m_records));
}

void TestLibraryUpload::settingsAreWrittenAfterAnUpload()
{
    support::Peer& peer = plugIn();
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, m_records.size() + 4));
    QTRY_VERIFY(progress() == nullptr);
    peer.forgetLines();
    trigger("actionWriteSettings");
    QCOMPARE(progress()->labelText(), QStringLiteral("Download.."));
    QVERIFY(waitForLines(peer, 69));
    QCOMPARE(peer.lines().at(2), QStringLiteral("#EEPROM"));
    QTRY_VERIFY(progress() == nullptr);
}

void TestLibraryUpload::aQuestionWithoutAnAnswer()
{
    const support::Peer& peer = plugIn();
    QEventLoop loop; // as the program's own, which the end of the program ends
    QTimer::singleShot(0, &loop, [&] {
        support::DialogScript user;
        user.chooseFile(path("library.mia"));
        user.act([] { QCoreApplication::quit(); });
        trigger("actionLibraryUpdate");
        loop.quit();
    });
    loop.exec();
    QTest::qWait(50);
    QVERIFY(peer.lines().isEmpty());
    QVERIFY(progress() == nullptr);
}

void TestLibraryUpload::closingTheWindow()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(20);
    upload(path("library.mia"));
    QVERIFY(waitForLines(peer, 20));
    m_window->close();
    QTRY_COMPARE(peer.lines().last(), QStringLiteral("#ROOT"));
    QVERIFY(progress() == nullptr);
}

MIOLKA_MOCKED_TEST_MAIN(TestLibraryUpload)
#include "test_libraryupload.moc"
