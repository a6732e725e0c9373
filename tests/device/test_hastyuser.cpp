// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/devicewindowtest.h"

#include <QPushButton>
#include <QTimer>

using support::child;

/// What a hasty user does at a moment when nobody thought of it.
class TestHastyUser : public support::DeviceWindowTest
{
    Q_OBJECT

private slots:
    void cancelBesideTheLastAnswer();
    void closingTheProgressCancels_data();
    void closingTheProgressCancels();
    void confirmingWithoutTheDevice();
    void pluggingInAtAnotherPort();

private:
    void closeErrorBox()
    {
        QTRY_VERIFY(box() != nullptr);
        QCOMPARE(box()->windowTitle(), QStringLiteral("Error"));
        box()->close();
    }
};

void TestHastyUser::cancelBesideTheLastAnswer()
{
    support::Peer& peer = plugIn();
    const QByteArray held = support::markedImage('d');
    const QList<QByteArray> records = support::settingsText(held).split('\n');
    peer.setAnswer([&peer, records](const QByteArray& line) {
        const auto record = peer.lines().size() - 5;
        return (record >= 0 && record < records.size() ? records.at(record) : line) + "\r\n";
    });
    // The click lies in the queue while the settings are shown; the progress then lets it in.
    bool isClicked = false;
    connect(m_window->findChild<cMyMiolka*>(), &cMyMiolka::newDataRead, this, [&] {
        if (!isClicked) {
            isClicked = true;
            QTimer::singleShot(0, progress()->findChild<QPushButton*>(), &QPushButton::click);
        }
    });
    trigger("actionReadSettings");
    QVERIFY(support::waitFor([&] { return isClicked && progress() == nullptr; }));
    QCOMPARE(support::imageOf(*m_window), held);
    // Nothing is left over for the next exchange.
    peer.forgetLines();
    child<QPushButton>(*m_window, "pbGetStatus")->click();
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 93; }));
    QCOMPARE(text("lMiolkaPort"), QStringLiteral("ttyACM0"));
}

void TestHastyUser::closingTheProgressCancels_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("the frame's button") << false;
}

void TestHastyUser::closingTheProgressCancels()
{
    QFETCH(bool, byKey);
    support::Peer& peer = plugIn();
    peer.fallSilentAt(10);
    trigger("actionWriteSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 10; }));
    if (byKey) {
        QTest::keyClick(progress(), Qt::Key_Escape);
    } else {
        progress()->close();
    }
    QVERIFY(progress() == nullptr);
    peer.send("late\r\n");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 11; }));
    QCOMPARE(peer.lines().last(), QStringLiteral("#ROOT"));
    peer.setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    peer.forgetLines();
    trigger("actionWriteSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 69; }));
}

void TestHastyUser::confirmingWithoutTheDevice()
{
    plugIn();
    QTimer::singleShot(0, this, [this] {
        QMessageBox* const question = box();
        QVERIFY(question != nullptr);
        m_ports->unplug(QStringLiteral("ttyACM0"));
        QTRY_VERIFY(box() != question);
        closeErrorBox(); // the port that went
        question->button(QMessageBox::Yes)->click();
    });
    trigger("actionClearStats");
    closeErrorBox(); // the port that cannot be opened
    QTest::qWait(200);
    QVERIFY(box() == nullptr);
    const support::Peer& again = plugIn();
    QTest::qWait(50);
    QVERIFY(again.lines().isEmpty());
    QCOMPARE(text("lMiolkaPort"), QStringLiteral("ttyACM0"));
}

void TestHastyUser::pluggingInAtAnotherPort()
{
    plugIn();
    m_ports->unplug(QStringLiteral("ttyACM0"));
    closeErrorBox();
    m_ports->plug(QStringLiteral("ttyACM1"));
    QTRY_COMPARE(text("lPortNote"),
                 QStringLiteral("Transfers use ttyACM0; restart the program to use ttyACM1"));
    closeErrorBox(); // the link keeps to its port, which is not there
    m_ports->unplug(QStringLiteral("ttyACM1"));
    QTRY_COMPARE(text("lPortNote"), QString());
    closeErrorBox();
    plugIn();
    QCOMPARE(text("lPortNote"), QString());
    QCOMPARE(text("lMiolkaPort"), QStringLiteral("ttyACM0"));
}

MIOLKA_MOCKED_TEST_MAIN(TestHastyUser)
#include "test_hastyuser.moc"
