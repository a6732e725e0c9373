// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"

#include "image/memoryarea.h"
#include "tests/support/dialogscript.h"
#include "tests/support/guitest.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

/// Files dropped on the window.
class TestDroppedFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void opensLikeOpen();
    void asksFirst();
    void isAlwaysACopy();
    void theFirstFileOfSeveral();
    void whatIsNoFileIsRefused_data();
    void whatIsNoFileIsRefused();
    void aNameThatIsNoUtf8IsRefused();
    void nothingIsTakenDuringASimulation();
    void aSimulationThatStartsAfterTheDrop();
    void nothingIsTakenWhileADialogAsks();
    void twoDropsAskOnce();

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory->filePath(QString::fromUtf8(name));
    }
    /// Drags the URLs over the window and lets go; true if the window took them.
    bool drop(const QList<QUrl>& urls, Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction)
    {
        QMimeData data;
        data.setUrls(urls);
        const QPoint middle = m_window->rect().center();
        QDragEnterEvent enter(middle, offered, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        enter.ignore();
        QCoreApplication::sendEvent(m_window.get(), &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent event(middle, offered, &data, Qt::LeftButton, Qt::NoModifier);
        event.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(m_window.get(), &event);
        m_action = event.dropAction();
        return event.isAccepted();
    }
    [[nodiscard]] QByteArray bytes() const
    {
        return support::bytesOf(
            *m_window->findChild<cMyMemoryArea*>(QStringLiteral("settingsImage")));
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MainWindow> m_window;
    Qt::DropAction m_action = Qt::IgnoreAction;
};

void TestDroppedFiles::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    support::writeFile(path("żółw 1.mio"), support::settingsText(support::markedImage('x')));
    support::writeFile(path("b.mio"), support::settingsText(support::markedImage('b')));
    m_window = std::make_unique<MainWindow>();
    m_window->show();
}

void TestDroppedFiles::opensLikeOpen()
{
    support::DialogScript user;
    user.press(QMessageBox::No);
    QVERIFY(drop({QUrl::fromLocalFile(path("żółw 1.mio"))}));
    // The source of the drag is not kept waiting for the answer.
    QVERIFY(user.seen().isEmpty());
    QTRY_COMPARE(bytes(), support::markedImage('x'));
    QVERIFY(m_window->windowTitle().endsWith(QStringLiteral(" --- ") + path("żółw 1.mio")));
    QVERIFY(user.isFinished());
}

void TestDroppedFiles::asksFirst()
{
    support::DialogScript user;
    user.press(QMessageBox::Yes);
    user.chooseFile(path("kept.mio"));
    QVERIFY(drop({QUrl::fromLocalFile(path("b.mio"))}));
    QTRY_COMPARE(bytes(), support::markedImage('b'));
    QCOMPARE(user.seen().at(0).text, QStringLiteral("Do you want to save changes?"));
    QCOMPARE(support::readFile(path("kept.mio")), support::settingsText(support::templateImage()));
}

void TestDroppedFiles::isAlwaysACopy()
{
    support::DialogScript user;
    user.press(QMessageBox::No);
    QVERIFY(drop({QUrl::fromLocalFile(path("b.mio"))}));
    QCOMPARE(m_action, Qt::CopyAction);
    QTRY_VERIFY(user.isFinished());
    QVERIFY(!drop({QUrl::fromLocalFile(path("b.mio"))}, Qt::MoveAction));
}

void TestDroppedFiles::theFirstFileOfSeveral()
{
    support::DialogScript user;
    user.press(QMessageBox::No);
    QVERIFY(drop({QUrl(QStringLiteral("https://example.org/a.mio")),
                  QUrl::fromLocalFile(path("b.mio")), QUrl::fromLocalFile(path("żółw 1.mio"))}));
    QTRY_COMPARE(bytes(), support::markedImage('b'));
    QTest::qWait(50);
    QCOMPARE(bytes(), support::markedImage('b'));
}

void TestDroppedFiles::whatIsNoFileIsRefused_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("remote") << QUrl(QStringLiteral("https://example.org/a.mio"));
    QTest::newRow("directory") << QUrl::fromLocalFile(QDir::tempPath());
    QTest::newRow("missing") << QUrl::fromLocalFile(QStringLiteral("/nowhere/a.mio"));
    QTest::newRow("device") << QUrl::fromLocalFile(QStringLiteral("/dev/zero"));
    QTest::newRow("nothing") << QUrl();
}

void TestDroppedFiles::whatIsNoFileIsRefused()
{
    QFETCH(QUrl, url);
    QVERIFY(!drop({url}));
    QTest::qWait(30);
    QCOMPARE(bytes(), support::templateImage());
}

void TestDroppedFiles::aNameThatIsNoUtf8IsRefused()
{
    const QByteArray text = support::settingsText(support::markedImage('x'));
    const QByteArray name = path("a").toUtf8() + "\xFF.mio";
    support::writeRawFile(name, text);
    support::writeFile(path("a\xEF\xBF\xBD.mio"), text);
    const QString prefix = QStringLiteral("file://") + path("a");
    QVERIFY(!drop({QUrl(prefix + QStringLiteral("%FF.mio"))}));
    support::DialogScript user;
    user.press(QMessageBox::No);
    QVERIFY(drop({QUrl(prefix + QStringLiteral("%EF%BF%BD.mio"))}));
    QTRY_VERIFY(user.isFinished());
    QCOMPARE(unlink(name.constData()), 0);
}

void TestDroppedFiles::nothingIsTakenDuringASimulation()
{
    m_window->simulationInProgress(true);
    QVERIFY(!drop({QUrl::fromLocalFile(path("b.mio"))}));
}

void TestDroppedFiles::aSimulationThatStartsAfterTheDrop()
{
    const support::DialogScript nothing;
    QVERIFY(drop({QUrl::fromLocalFile(path("b.mio"))}));
    m_window->simulationInProgress(true);
    QTest::qWait(50);
    QCOMPARE(bytes(), support::templateImage());
    QVERIFY(nothing.isFinished());
}

void TestDroppedFiles::nothingIsTakenWhileADialogAsks()
{
    bool wasTaken = true;
    // Before the answers, so that the question is still open.
    QTimer::singleShot(0, this, [this, &wasTaken] {
        QVERIFY(QApplication::activeModalWidget() != nullptr);
        wasTaken = drop({QUrl::fromLocalFile(path("b.mio"))});
    });
    support::DialogScript user;
    user.press(QMessageBox::Yes);
    user.chooseFile(path("kept.mio"));
    m_window->openFileDialog(QStringLiteral("NewFile"));
    QVERIFY(!wasTaken);
    QVERIFY(user.isFinished());
    QCOMPARE(support::readFile(path("kept.mio")), support::settingsText(support::templateImage()));
}

void TestDroppedFiles::twoDropsAskOnce()
{
    support::DialogScript user;
    user.press(QMessageBox::Yes);
    user.chooseFile(path("kept.mio"));
    QVERIFY(drop({QUrl::fromLocalFile(path("b.mio"))}));
    QVERIFY(drop({QUrl::fromLocalFile(path("żółw 1.mio"))}));
    QTRY_COMPARE(bytes(), support::markedImage('b'));
    QTest::qWait(50);
    QVERIFY(user.isFinished());
    QCOMPARE(bytes(), support::markedImage('b'));
    QCOMPARE(support::readFile(path("kept.mio")), support::settingsText(support::templateImage()));
}

MIOLKA_GUI_TEST_MAIN(TestDroppedFiles)
#include "test_droppedfiles.moc"
