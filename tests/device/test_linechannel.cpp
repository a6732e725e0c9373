// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/linechannel.h"

#include "device/protocol.h"
#include "tests/support/peer.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using Haste = cMyLineChannel::Haste;

/// Lines and their answers, for a thread that waits.
class TestLineChannel : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_peer = std::make_unique<support::Peer>(); }
    void aLineAndItsAnswer();
    void theAnswerIsDecodedAsUtf8UpToItsFirstZero();
    void answers_data();
    void answers();
    void twoAnswersAtOnceAreForTwoLines();
    void aLineIsSentThoughItsAnswerIsThereAlready();
    void settlingDropsWhatIsLate();
    void settlingEndsWhenTheLineIsQuiet();
    void settlingForgetsAnswersThatNobodyTook();
    void settlingWaitsForQuietAnew();
    void settlingIsCutShortForWhoMustLeave();
    void silenceEndsTheWait();
    void aClosedPort();

private:
    struct Result
    {
        bool isAnswered = false;
        QString reply;
        bool operator==(const Result& other) const
        {
            return isAnswered == other.isAnswered && reply == other.reply;
        }
    };

    /// Exchanges these lines in a thread of its own while the peer is served in this one.
    QVector<Result> exchange(const QStringList& lines, bool settle = false)
    {
        QVector<Result> results;
        const QString path = m_peer->path();
        inThread([&results, path, lines, settle] { run(results, path, lines, settle); });
        return results;
    }

    static void inThread(const std::function<void()>& call)
    {
        const std::unique_ptr<QThread> thread(QThread::create(call));
        thread->start();
        support::waitFor([&thread] { return thread->isFinished(); });
        thread->wait();
    }

    static void run(QVector<Result>& results, const QString& path, const QStringList& lines,
                    bool settle)
    {
        QSerialPort port(path);
        cMyLineChannel channel([] { return Haste::None; });
        if (!port.open(QIODevice::ReadWrite)) {
            return;
        }
        if (settle) {
            channel.settle(port);
        }
        for (const QString& line : lines) {
            Result result;
            result.isAnswered = channel.exchange(port, line, result.reply);
            results.append(result);
        }
    }

    std::unique_ptr<support::Peer> m_peer;
};

void TestLineChannel::aLineAndItsAnswer()
{
    m_peer->setAnswer([](const QByteArray& line) { return "to " + line + "\r\n"; });
    const QVector<Result> results = exchange({"#ROOT\r\n", ":00000001FF\r\n"});
    QCOMPARE(m_peer->lines(), QStringList({"#ROOT", ":00000001FF"}));
    QCOMPARE(results, QVector<Result>({{true, "to #ROOT\r\n"}, {true, "to :00000001FF\r\n"}}));
}

void TestLineChannel::theAnswerIsDecodedAsUtf8UpToItsFirstZero()
{
    m_peer->setAnswer([](const QByteArray& line) {
        return line == "a" ? QByteArray("\xC5\x82\r\n") : QByteArray("one\0two\r\n", 9);
    });
    QCOMPARE(exchange({"a\r\n", "b\r\n"}),
             QVector<Result>({{true, QString(QChar(0x0142)) + "\r\n"}, {true, "one"}}));
}

void TestLineChannel::answers_data()
{
    QTest::addColumn<QByteArrayList>("packets");
    QTest::addColumn<QString>("reply");
    QTest::newRow("whole") << QByteArrayList{"#ROOT\r\n"} << "#ROOT\r\n";
    QTest::newRow("byte by byte") << QByteArrayList{"#", "R", "O", "O", "T", "\r", "\n"}
                                  << "#ROOT\r\n";
    QTest::newRow("a line feed alone") << QByteArrayList{"#ROOT\n"} << "#ROOT\n";
    QTest::newRow("empty") << QByteArrayList{"\r\n"} << "\r\n";
    QTest::newRow("behind a notice in the same packet")
        << QByteArrayList{"!n\r\n#ROOT\r\n"} << "#ROOT\r\n";
    QTest::newRow("behind notices")
        << QByteArrayList{"!n\r\n!m", "\r\n", "#ROOT\r\n"} << "#ROOT\r\n";
    QTest::newRow("a mark of a notice inside") << QByteArrayList{"a!\r\n"} << "a!\r\n";
}

void TestLineChannel::answers()
{
    QFETCH(QByteArrayList, packets);
    QFETCH(QString, reply);
    m_peer->setAnswer([&](const QByteArray&) {
        for (const QByteArray& packet : packets) {
            m_peer->send(packet);
            QThread::msleep(1);
        }
        return QByteArray();
    });
    QCOMPARE(exchange({"#ROOT\r\n"}), QVector<Result>({{true, reply}}));
}

void TestLineChannel::twoAnswersAtOnceAreForTwoLines()
{
    m_peer->setAnswer([](const QByteArray& line) {
        return line == "1" ? QByteArray("first\r\nsecond\r\n") : QByteArray();
    });
    QCOMPARE(exchange({"1\r\n", "2\r\n"}),
             QVector<Result>({{true, "first\r\n"}, {true, "second\r\n"}}));
}

void TestLineChannel::aLineIsSentThoughItsAnswerIsThereAlready()
{
    m_peer->setAnswer([](const QByteArray& line) {
        return line == "1" ? QByteArray("first\r\nsecond\r\n") : QByteArray();
    });
    // The port is closed right after the second line: what it still holds then is lost.
    QCOMPARE(exchange({"1\r\n", "2\r\n"}).size(), 2);
    QVERIFY(support::waitFor([this] { return m_peer->lines().size() == 2; }));
    QCOMPARE(m_peer->lines(), QStringList({"1", "2"}));
}

void TestLineChannel::settlingDropsWhatIsLate()
{
    m_peer->send("late\r\nlater");
    QTimer::singleShot(30, m_peer.get(), [this] { m_peer->send(" still\r\n"); });
    QCOMPARE(exchange({"#ROOT\r\n"}, true), QVector<Result>({{true, "#ROOT\r\n"}}));
}

void TestLineChannel::settlingEndsWhenTheLineIsQuiet()
{
    QTimer babble;
    connect(&babble, &QTimer::timeout, m_peer.get(), [this] { m_peer->send("! on and on\r\n"); });
    babble.start(5);
    QCOMPARE(exchange({"#ROOT\r\n"}, true), QVector<Result>({{true, "#ROOT\r\n"}}));
}

void TestLineChannel::settlingForgetsAnswersThatNobodyTook()
{
    m_peer->setAnswer([](const QByteArray& line) {
        return line == "1" ? QByteArray("first\r\nsecond\r\nhalf") : line + "\r\n";
    });
    QVector<QString> replies(2);
    inThread([path = m_peer->path(), &replies] {
        QSerialPort port(path);
        cMyLineChannel channel([] { return Haste::None; });
        if (port.open(QIODevice::ReadWrite)) {
            channel.exchange(port, QStringLiteral("1\r\n"), replies[0]);
            channel.settle(port);
            channel.exchange(port, QStringLiteral("2\r\n"), replies[1]);
        }
    });
    QCOMPARE(replies, QVector<QString>({"first\r\n", "2\r\n"}));
}

void TestLineChannel::settlingWaitsForQuietAnew()
{
    constexpr int lateLines = 5;
    constexpr int gap = 15;
    constexpr int allOfThem = lateLines * gap;
    static_assert(allOfThem > device::quietMoment.count());
    // The answer comes after all of them.
    m_peer->setAnswer([this](const QByteArray& line) {
        QTimer::singleShot(allOfThem, m_peer.get(), [this, line] { m_peer->send(line + "\r\n"); });
        return QByteArray();
    });
    int calls = 0;
    QString reply;
    inThread([&] {
        QSerialPort port(m_peer->path());
        // Each look at the haste finds that another late line has come.
        cMyLineChannel channel([&] {
            if (calls++ < lateLines) {
                QThread::msleep(gap);
                m_peer->send("late\r\n");
            }
            return Haste::None;
        });
        if (port.open(QIODevice::ReadWrite)) {
            channel.settle(port);
            channel.exchange(port, QStringLiteral("#ROOT\r\n"), reply);
        }
    });
    QCOMPARE(reply, QStringLiteral("#ROOT\r\n"));
}

void TestLineChannel::settlingIsCutShortForWhoMustLeave()
{
    int calls = 0;
    inThread([&] {
        QSerialPort port(m_peer->path());
        cMyLineChannel channel([&calls] {
            ++calls;
            return Haste::Leave;
        });
        if (port.open(QIODevice::ReadWrite)) {
            channel.settle(port);
        }
    });
    QCOMPARE(calls, 1);
}

void TestLineChannel::silenceEndsTheWait()
{
    m_peer->setAnswer([](const QByteArray&) { return QByteArray(); });
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(exchange({"#ROOT\r\n"}), QVector<Result>({{false, QString()}}));
    QVERIFY(clock.elapsed() >= cMyLineChannel::answerPatience);
}

void TestLineChannel::aClosedPort()
{
    QSerialPort port;
    cMyLineChannel channel([] { return Haste::None; });
    QString reply;
    QElapsedTimer clock;
    clock.start();
    channel.settle(port);
    QVERIFY(!channel.exchange(port, QStringLiteral("#ROOT\r\n"), reply));
    QVERIFY(clock.elapsed() < cMyLineChannel::answerPatience);
}

QTEST_GUILESS_MAIN(TestLineChannel)
#include "test_linechannel.moc"
