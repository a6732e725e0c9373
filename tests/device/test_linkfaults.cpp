// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/linktest.h"
#include "tests/support/posix.h"

#include <QTimer>

/// What a device, a cable or a hasty user may do to an exchange.
class TestLinkFaults : public support::LinkTest
{
    Q_OBJECT

private slots:
    void cancelAtEveryLine_data();
    void cancelAtEveryLine();
    void cancelTakesWhateverComes_data();
    void cancelTakesWhateverComes();
    void aNewTransferEndsTheCancelledOne();
    void aLeftOverCancelEndsAStatusQuery();
    void aLeftOverCancelEndsAServiceCommand();
    void aTransferForgetsALeftOverCancel();
    void cancelOfAWaitingTransfer();
    void noticesAreNoAnswers();
    void answersCutAnywhere();
    void twoAnswersInOnePacket();
    void paddedAnswers();
    void aMegabyteWithoutALineEnd();
    void hostileBytes();
    void aLateAnswerIsNotTheNext();
    void aNoisyLineIsNotWaitedForLong();
    void whatLiesInThePortIsDropped();
    void settingThePortCutsOffWhatRuns();
    void settingThePortAfterACancel();
    void theEndOfTheProgram();
};

void TestLinkFaults::cancelAtEveryLine_data()
{
    QTest::addColumn<bool>("isWrite");
    QTest::newRow("write") << true;
    QTest::newRow("read") << false;
}

void TestLinkFaults::cancelAtEveryLine()
{
    QFETCH(bool, isWrite);
    constexpr int lineCount = 69;
    for (int cancelled = 1; cancelled <= lineCount; ++cancelled) {
        m_peer->forgetLines();
        m_progress->clear();
        m_records->clear();
        // The user cancels while the answer to this line is under way.
        m_peer->setAnswer([this, cancelled](const QByteArray& line) {
            if (m_peer->lines().size() == cancelled) {
                m_link->breakCommunication();
            }
            return line + "\r\n";
        });
        isWrite ? write(settingsRecords()) : read(settingsRecords());
        QVERIFY(support::waitFor([=] { return m_peer->lines().size() == cancelled + 1; }));
        QCOMPARE(m_peer->lines().last(), QStringLiteral("#ROOT"));
        QCOMPARE(m_progress->count(), cancelled - 1);
        QCOMPARE(m_records->count(), 0);
        QVERIFY(isPortFree());
    }
    exchangeCleanly();
}

void TestLinkFaults::cancelTakesWhateverComes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("an answer") << QByteArray("#ROOT\r\n");
    QTest::newRow("a part of one") << QByteArray("#");
    QTest::newRow("a notice") << QByteArray("!busy\r\n");
    QTest::newRow("a zero byte") << QByteArray(1, '\0');
}

void TestLinkFaults::cancelTakesWhateverComes()
{
    QFETCH(QByteArray, bytes);
    m_peer->fallSilentAt(1);
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 1);
    m_link->breakCommunication();
    QTest::qWait(30);
    QCOMPARE(m_peer->lines().size(), 1);
    m_peer->send(bytes);
    constexpr int lessThanItsPatience = 2000;
    QTRY_COMPARE_WITH_TIMEOUT(m_peer->lines(),
                              QStringList({QStringLiteral("#ROOT"), QStringLiteral("#ROOT")}),
                              lessThanItsPatience);
    QCOMPARE(m_progress->count(), 0);
    exchangeCleanly();
}

void TestLinkFaults::aNewTransferEndsTheCancelledOne()
{
    m_peer->fallSilentAt(5);
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 5);
    m_link->breakCommunication();
    m_progress->clear();
    read({QStringLiteral(":00000001FF")});
    QTRY_COMPARE(m_peer->lines().size(), 7);
    QCOMPARE(m_peer->lines().mid(5),
             QStringList({QStringLiteral("#ROOT"), QStringLiteral("#ROOT")}));
    m_link->breakCommunication();
    m_peer->send("#ROOT\r\n");
    QTRY_COMPARE(m_peer->lines().size(), 8);
    exchangeCleanly();
}

void TestLinkFaults::aLeftOverCancelEndsAStatusQuery()
{
    m_link->breakCommunication();
    m_link->readStatus();
    QTRY_COMPARE(m_peer->lines(), QStringList({QStringLiteral("#ROOT"), QStringLiteral("#ROOT")}));
    QTest::qWait(50);
    QCOMPARE(m_statuses->count(), 0);
    m_link->readStatus();
    QTRY_COMPARE(m_statuses->count(), 1);
}

void TestLinkFaults::aLeftOverCancelEndsAServiceCommand()
{
    m_link->breakCommunication();
    m_link->clearStats();
    QTRY_COMPARE(m_peer->lines(), QStringList({QStringLiteral("#CLEAR"), QStringLiteral("#ROOT")}));
    exchangeCleanly();
}

void TestLinkFaults::aTransferForgetsALeftOverCancel()
{
    m_link->breakCommunication();
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 69);
}

void TestLinkFaults::cancelOfAWaitingTransfer()
{
    m_link->readStatus();
    write(settingsRecords());
    m_link->breakCommunication();
    QTRY_COMPARE(m_holds->count(), 2);
    QTest::qWait(100);
    QCOMPARE(m_peer->lines().filter(QStringLiteral("#WRITE")).size(), 0);
    // The query before it was not what the user cancelled.
    QTRY_COMPARE(m_statuses->count(), 1);
    exchangeCleanly();
}

void TestLinkFaults::noticesAreNoAnswers()
{
    m_peer->setAnswer(
        [](const QByteArray& line) { return QByteArray("!\r\n!battery\r\n") + line + "\r\n"; });
    read(settingsRecords());
    QTRY_COMPARE(m_records->count(), 64);
    QCOMPARE(m_progress->count(), 69);
    QCOMPARE(m_peer->lines().size(), 69);
}

void TestLinkFaults::answersCutAnywhere()
{
    const QStringList records = settingsRecords().mid(0, 2);
    const int longest = static_cast<int>(records.first().size()) + 2;
    for (int cut = 1; cut < longest; ++cut) {
        m_records->clear();
        m_progress->clear();
        m_peer->setAnswer([this, cut](const QByteArray& line) {
            const QByteArray answer = line + "\r\n";
            QTimer::singleShot(1, m_peer.get(),
                               [this, answer, cut] { m_peer->send(answer.mid(cut)); });
            return answer.left(cut);
        });
        read(records);
        QVERIFY(support::waitFor([this] { return m_records->count() == 2; }));
        QCOMPARE(m_progress->count(), 6);
        QCOMPARE(m_records->at(1).at(1).toUInt(), 16U);
    }
}

void TestLinkFaults::twoAnswersInOnePacket()
{
    m_peer->setAnswer([](const QByteArray& line) {
        if (line == "#HEX") {
            return QByteArray("#HEX\r\n#EEPROM\r\n");
        }
        return line == "#EEPROM" ? QByteArray() : line + "\r\n";
    });
    read(settingsRecords());
    QTRY_COMPARE(m_records->count(), 64);
    QCOMPARE(m_peer->lines().size(), 69);
}

void TestLinkFaults::paddedAnswers()
{
    m_peer->setAnswer([](const QByteArray& line) {
        return QByteArray(3, '\0') + line + "\r\n" + QByteArray(2, '\0');
    });
    read(settingsRecords());
    QTRY_COMPARE(m_records->count(), 64);
}

void TestLinkFaults::aMegabyteWithoutALineEnd()
{
    constexpr int pieces = 1024;
    const long before = support::peakMemory();
    m_peer->fallSilentAt(3);
    read(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 2);
    m_peer->setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    for (int i = 0; i < pieces; ++i) {
        m_peer->send(QByteArray(1024, 'x'));
        QCoreApplication::processEvents();
    }
    QCOMPARE(m_progress->count(), 2);
    m_peer->send("\r\n");
    QTRY_COMPARE(m_records->count(), 64);
    QCOMPARE(m_progress->count(), 69);
#ifndef __SANITIZE_ADDRESS__
    QVERIFY(support::peakMemory() - before < 900); // KiB
#else
    Q_UNUSED(before)
#endif
}

void TestLinkFaults::hostileBytes()
{
    QRandomGenerator random(4001);
    for (int round = 0; round < 20; ++round) {
        m_progress->clear();
        m_peer->setAnswer([&random](const QByteArray& /*line*/) {
            QByteArray answer(random.bounded(1, 60), '\0');
            for (char& byte : answer) {
                const auto any = static_cast<char>(random.generate());
                byte = any == '\n' || any == '!' ? 'x' : any;
            }
            return answer + '\n';
        });
        read(settingsRecords());
        QVERIFY(support::waitFor([this] { return m_progress->count() == 69; }));
    }
    exchangeCleanly();
}

void TestLinkFaults::aLateAnswerIsNotTheNext()
{
    m_peer->fallSilentAt(6);
    read(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 6);
    m_link->breakCommunication();
    QTRY_COMPARE_WITH_TIMEOUT(m_peer->lines().size(), 7, 5000);
    m_peer->setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    m_peer->forgetLines();
    read(settingsRecords());
    // The device is only now done with what it was asked before.
    QTest::qWait(20);
    QCOMPARE(m_peer->lines().size(), 0);
    m_peer->send(":0100000041BE\r\n#ROOT\r\n");
    QTRY_COMPARE(m_records->count(), 64);
    QCOMPARE(m_peer->lines().size(), 69);
    QCOMPARE(m_records->at(0).at(2).value<QVector<quint8>>().size(), 16);
}

void TestLinkFaults::aNoisyLineIsNotWaitedForLong()
{
    write(settingsRecords());
    m_link->breakCommunication();
    QVERIFY(support::waitFor([this] { return m_peer->lines().size() == 2; }));
    QTimer noise;
    connect(&noise, &QTimer::timeout, this, [this] { m_peer->send("!noise\r\n"); });
    noise.start(5);
    exchangeCleanly();
}

void TestLinkFaults::whatLiesInThePortIsDropped()
{
    m_peer->send(":0100000041BE\r\n:0100000041BE\r\n");
    QTest::qWait(20);
    exchangeCleanly();
}

void TestLinkFaults::settingThePortCutsOffWhatRuns()
{
    m_peer->fallSilentAt(20);
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 19);
    m_peer->setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    m_link->setPort(QString());
    QCOMPARE(m_losses->count(), 1);
    QTRY_COMPARE(m_statuses->count(), 1);
    QCOMPARE(m_progress->count(), 19);
    exchangeCleanly();
}

void TestLinkFaults::settingThePortAfterACancel()
{
    m_peer->fallSilentAt(20);
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 19);
    m_peer->setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    m_link->breakCommunication();
    m_link->setPort(QStringLiteral("another"));
    QTRY_COMPARE(m_statuses->count(), 1);
    QCOMPARE(m_losses->count(), 0);
    QCOMPARE(m_peer->lines().at(20), QStringLiteral("#ROOT"));
    QCOMPARE(m_peer->lines().size(), 20 + 1 + 93);
    exchangeCleanly();
}

void TestLinkFaults::theEndOfTheProgram()
{
    m_peer->fallSilentAt(20);
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 19);
    const auto count = m_progress->count();
    m_link->end();
    QVERIFY(isPortFree());
    QTRY_COMPARE(m_peer->lines().last(), QStringLiteral("#ROOT"));
    QTest::qWait(50);
    QCOMPARE(m_progress->count(), count);
    m_owner.reset();
}

MIOLKA_GUI_TEST_MAIN(TestLinkFaults)
#include "test_linkfaults.moc"
