// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/linktest.h"

#include <QPushButton>

/// A device that goes while the link uses it, or before.
class TestLinkLoss : public support::LinkTest
{
    Q_OBJECT

private slots:
    void hangUpAtEveryLine_data();
    void hangUpAtEveryLine();
    void aPortThatCannotBeOpened();
    void aVanishedDeviceIsToldOnce();
    void aWriteThatFailsAtOnce();
    void whileLateAnswersAreLetPass();
    void withRequestsWaiting();
    void aDueQueryGoesWithTheDevice();
    void thePortOutlivesItsPlaceInTheList_data();
    void thePortOutlivesItsPlaceInTheList();
    void aDeviceThatWasSentAwayOutlivesItsPlaceInTheList();
    void aListedDeviceIsLeftToTheList();

private:
    /// What the selector tells when the list becomes these.
    void list(const QStringList& names) const;
    void closeTheOnlyBox();
};

void TestLinkLoss::hangUpAtEveryLine_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("lineCount");
    QTest::newRow("status") << 0 << 93;
    QTest::newRow("write") << 1 << 69;
    QTest::newRow("read") << 2 << 69;
    QTest::newRow("service command") << 3 << 1;
}

void TestLinkLoss::hangUpAtEveryLine()
{
    QFETCH(int, operation);
    QFETCH(int, lineCount);
    const std::function<void()> operations[] = {[this] { m_link->readStatus(); },
                                                [this] { write(settingsRecords()); },
                                                [this] { read(settingsRecords()); },
                                                [this] {
                                                    m_link->clearStats();
                                                }};
    for (int line = 1; line <= lineCount; ++line) {
        plugIn();
        const bool isTransfer = operation == 1 || operation == 2;
        m_peer->setAnswer([this, line](const QByteArray& text) {
            if (m_peer->lines().size() == line) {
                m_peer->hangUp();
            }
            return text + "\r\n";
        });
        operations[operation]();
        QVERIFY(support::waitFor([=] { return m_peer->lines().size() == line; }));
        QVERIFY(support::waitFor([=] { return m_losses->count() == (isTransfer ? 1 : 0); }));
        QTest::qWait(2);
        QCOMPARE(m_records->count() + m_statuses->count(), 0);
        QVERIFY(errorBox() == nullptr);
        QCOMPARE(m_holds->count(), isTransfer ? 2 : 0);
        // The link has noticed: a query does not wait for the one that was cut off.
        m_link->readStatus();
        QVERIFY(support::waitFor([] { return errorBox() != nullptr; }));
        m_link->end();
    }
}

void TestLinkLoss::aPortThatCannotBeOpened()
{
    cMyMiolka link(&m_image, m_owner.get());
    link.setPort(QStringLiteral("/dev/ttyMissing"));
    QTRY_VERIFY(errorBox() != nullptr);
    auto* box = errorBox();
    QCOMPARE(box->windowTitle(), QStringLiteral("Error"));
    QCOMPARE(box->text(), QSerialPort().tr("No such file or directory"));
    QCOMPARE(box->icon(), QMessageBox::Critical);
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QVERIFY(box->parent() == nullptr);
    QVERIFY(box->isModal());
    // Further attempts do not pile up boxes.
    link.readStatus();
    QCOMPARE(errorBox(), box);
    box->button(QMessageBox::Ok)->click();
    QVERIFY(errorBox() == nullptr);
    link.clearStats();
    QVERIFY(errorBox() != nullptr);
    link.end();
}

void TestLinkLoss::aVanishedDeviceIsToldOnce()
{
    m_peer->fallSilentAt(20);
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 19);
    m_peer->hangUp();
    QTRY_COMPARE(m_losses->count(), 1);
    QTest::qWait(200);
    QVERIFY(errorBox() == nullptr);
    m_link->setPort(QString());
    QVERIFY(errorBox() != nullptr);
    errorBox()->button(QMessageBox::Ok)->click();
    QTest::qWait(100);
    QVERIFY(errorBox() == nullptr);
}

void TestLinkLoss::aWriteThatFailsAtOnce()
{
    m_peer->fallSilentAt(1);
    connect(m_link, &cMyMiolka::writeProgress, m_owner.get(),
            [this](int /*min*/, int /*max*/, int progress) {
                if (progress == 1) {
                    m_peer->hangUp();
                }
            });
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 1);
    // The second answer is there already, so that the next line is written to a dead port.
    m_peer->send("#ROOT\r\n#HEX\r\n");
    QTRY_COMPARE(m_losses->count(), 1);
    QTest::qWait(50);
    QCOMPARE(m_progress->count(), 1);
    QCOMPARE(m_holds->count(), 2);
}

void TestLinkLoss::whileLateAnswersAreLetPass()
{
    m_peer->fallSilentAt(5);
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 5);
    m_link->breakCommunication();
    read(settingsRecords()); // ends the cancelled one and waits for quiet
    QTest::qWait(10);
    m_peer->hangUp();
    QTRY_COMPARE(m_losses->count(), 1);
    QTest::qWait(300);
    QCOMPARE(m_progress->count(), 4);
    QVERIFY(errorBox() == nullptr);
    m_link->readStatus();
    QVERIFY(errorBox() != nullptr);
    m_link->end();
}

void TestLinkLoss::withRequestsWaiting()
{
    m_peer->fallSilentAt(5);
    m_link->readStatus();
    m_link->clearStats();
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 5);
    m_peer->hangUp();
    // Both try to open the port; what the user sees is one box.
    QTRY_VERIFY(errorBox() != nullptr);
    QTRY_COMPARE(m_holds->count(), 2);
    QCOMPARE(m_progress->count(), 0);
    errorBox()->button(QMessageBox::Ok)->click();
    QTest::qWait(100);
    QVERIFY(errorBox() == nullptr);
}

void TestLinkLoss::aDueQueryGoesWithTheDevice()
{
    m_peer->fallSilentAt(5);
    m_link->readStatus();
    m_link->readStatus();
    QTRY_COMPARE(m_peer->lines().size(), 5);
    m_peer->hangUp();
    QTest::qWait(200);
    QVERIFY(errorBox() == nullptr); // that is told when the port has gone from the list
}

void TestLinkLoss::list(const QStringList& names) const
{
    m_link->setListedPorts(names);
    m_link->setPort(QString());
    if (!names.isEmpty()) {
        m_link->setPort(names.first());
    }
}

void TestLinkLoss::closeTheOnlyBox()
{
    QTRY_VERIFY(errorBox() != nullptr);
    QCOMPARE(errorBox()->text(), QSerialPort().tr("No such file or directory"));
    errorBox()->button(QMessageBox::Ok)->click();
    QTest::qWait(300);
    QVERIFY(errorBox() == nullptr);
}

void TestLinkLoss::thePortOutlivesItsPlaceInTheList_data()
{
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<bool>("isWriting");
    const QStringList another{QStringLiteral("another")};
    QTest::newRow("the only device") << QStringList() << false;
    QTest::newRow("the only device, during a write") << QStringList() << true;
    QTest::newRow("one of two") << another << false;
    QTest::newRow("one of two, during a write") << another << true;
}

void TestLinkLoss::thePortOutlivesItsPlaceInTheList()
{
    QFETCH(QStringList, left);
    QFETCH(bool, isWriting);
    m_peer->fallSilentAt(5);
    if (isWriting) {
        write(settingsRecords());
        QTRY_COMPARE(m_peer->lines().size(), 5);
    }
    list(left);
    // The port can still be opened, so that there is nothing to tell yet.
    QVERIFY(!isPortFree());
    QTest::qWait(50);
    QVERIFY(errorBox() == nullptr);
    m_peer->hangUp();
    closeTheOnlyBox();
    QCOMPARE(m_losses->count(), isWriting ? 1 : 0);
}

void TestLinkLoss::aDeviceThatWasSentAwayOutlivesItsPlaceInTheList()
{
    m_link->powerOff();
    QTRY_COMPARE(m_peer->lines().size(), 1);
    QTRY_VERIFY(isPortFree());
    m_peer->fallSilentAt(1);
    list({});
    QTRY_COMPARE(m_peer->lines().size(), 2);
    m_peer->hangUp();
    QTest::qWait(300);
    QVERIFY(errorBox() == nullptr);
    m_link->clearStats(); // by the user, who is told why nothing comes of it
    closeTheOnlyBox();
}

void TestLinkLoss::aListedDeviceIsLeftToTheList()
{
    m_peer->fallSilentAt(5);
    list({m_peer->path()});
    QTRY_COMPARE(m_peer->lines().size(), 5);
    m_peer->hangUp();
    QTest::qWait(300);
    QVERIFY(errorBox() == nullptr);
    list({});
    closeTheOnlyBox();
}

MIOLKA_GUI_TEST_MAIN(TestLinkLoss)
#include "test_linkloss.moc"
