// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/linktest.h"

#include <QTemporaryDir>
#include <QTimer>

/// How long the link waits for a device.
class TestLinkPatience : public support::LinkTest
{
    Q_OBJECT

private slots:
    void aSilentCancelledTransferEndsByItself();
    void silenceEndsAQuery_data();
    void silenceEndsAQuery();
    void aTransferIsPatient();
    void noticesDoNotProlongPatience();
    void noPatienceOutlivesItsQuery();
    void anExpectedAbsenceIsNotTold();
};

void TestLinkPatience::aSilentCancelledTransferEndsByItself()
{
    m_peer->fallSilentAt(10);
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 10);
    m_link->breakCommunication();
    QTest::qWait(2000);
    QCOMPARE(m_peer->lines().size(), 10);
    QTRY_COMPARE_WITH_TIMEOUT(m_peer->lines().size(), 11, 3000);
    QCOMPARE(m_peer->lines().last(), QStringLiteral("#ROOT"));
    QVERIFY(isPortFree());
    exchangeCleanly();
}

void TestLinkPatience::silenceEndsAQuery_data()
{
    QTest::addColumn<bool>("isStatus");
    QTest::newRow("status") << true;
    QTest::newRow("service command") << false;
}

void TestLinkPatience::silenceEndsAQuery()
{
    QFETCH(bool, isStatus);
    const int line = isStatus ? 20 : 1;
    m_peer->fallSilentAt(line);
    isStatus ? m_link->readStatus() : m_link->clearStats();
    QTRY_COMPARE(m_peer->lines().size(), line);
    QTest::qWait(8000);
    QCOMPARE(m_peer->lines().size(), line);
    QTRY_COMPARE_WITH_TIMEOUT(m_peer->lines().size(), line + 1, 5000);
    QCOMPARE(m_peer->lines().last(), QStringLiteral("#ROOT"));
    QCOMPARE(m_statuses->count(), 0);
    QVERIFY(isPortFree());
    exchangeCleanly();
}

void TestLinkPatience::aTransferIsPatient()
{
    m_peer->fallSilentAt(10);
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 10);
    QTest::qWait(11000); // erasing flash memory may take longer than any query is waited for
    QCOMPARE(m_peer->lines().size(), 10);
    m_peer->setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    m_peer->send("at last\r\n");
    QTRY_COMPARE(m_progress->count(), 69);
}

void TestLinkPatience::noticesDoNotProlongPatience()
{
    m_peer->fallSilentAt(1);
    QTimer notices;
    connect(&notices, &QTimer::timeout, this, [this] { m_peer->send("!still here\r\n"); });
    notices.start(500);
    m_link->clearStats();
    QTRY_COMPARE_WITH_TIMEOUT(m_peer->lines().size(), 2, 13000);
    QCOMPARE(m_peer->lines().last(), QStringLiteral("#ROOT"));
}

void TestLinkPatience::noPatienceOutlivesItsQuery()
{
    // A port that comes back under its old name is a link to whatever is behind it now.
    const QTemporaryDir directory;
    const QString name = directory.filePath(QStringLiteral("port"));
    QFile::link(m_peer->path(), name);
    cMyMiolka link(&m_image, m_owner.get());
    const QSignalSpy shown(&link, &cMyMiolka::statusChanged);
    link.setPort(name);
    QVERIFY(support::waitFor([&shown] { return shown.count() == 1; }));
    m_peer->forgetLines();
    // The device goes between two answers that came together.
    m_peer->setAnswer([this](const QByteArray& line) {
        if (m_peer->lines().size() < 20) {
            return line + "\r\n";
        }
        m_peer->send("x\r\nx\r\n");
        m_peer->hangUp();
        return QByteArray();
    });
    link.readStatus();
    QVERIFY(support::waitFor([this] { return m_peer->lines().size() == 20; }));
    QTest::qWait(200);
    support::Peer again;
    QFile::remove(name);
    QFile::link(again.path(), name);
    again.fallSilentAt(10);
    QStringList records = settingsRecords();
    link.writeSettings(EEPROM, records);
    QTRY_COMPARE(again.lines().size(), 10);
    QTest::qWait(11000);
    QCOMPARE(again.lines().size(), 10);
}

void TestLinkPatience::anExpectedAbsenceIsNotTold()
{
    for (const auto& command : {std::function<void()>([this] { m_link->reset(true); }),
                                std::function<void()>([this] { m_link->boot(); }),
                                std::function<void()>([this] { m_link->powerOff(); })}) {
        plugIn();
        command();
        QTRY_COMPARE(m_peer->lines().size(), 1);
        m_peer->hangUp();
        QTest::qWait(20);
        m_link->setPort(QString());
        QTest::qWait(20);
        QVERIFY(errorBox() == nullptr);
    }
    QTest::qWait(5500);
    m_link->readStatus();
    QVERIFY(errorBox() != nullptr);
    m_link->end();
}

MIOLKA_GUI_TEST_MAIN(TestLinkPatience)
#include "test_linkpatience.moc"
