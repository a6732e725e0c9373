// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/linktest.h"
#include "tests/device/statuslines.h"

/// Exchanges with a device that behaves.
class TestMiolka : public support::LinkTest
{
    Q_OBJECT

private slots:
    void theFirstPortIsKept();
    void anEmptyNameBeforeAnyDoesNothing();
    void everyCallOfSetPortAsksForTheStatus();
    void aStatusQuerySendsItsLines();
    void aTransferSendsItsLines_data();
    void aTransferSendsItsLines();
    void anUnknownMemoryIsNotNamed();
    void progressOfAWrite();
    void thePortIsClosedBeforeTheLastProgress();
    void recordsAreToldAfterTheLastAnswer();
    void theLastProgressFollowsTheRecords();
    void aWriteTellsNoRecords();
    void aStatusQueryTellsNoProgress();
    void serviceCommandsSendOneLine_data();
    void serviceCommandsSendOneLine();
    void theNextLineWaitsForTheAnswer();
    void aSecondStatusRequestFollowsTheFirst();
    void requestsWaitForTheQuery();
    void aTransferHoldsItsPort();
    void portSettings();
    void everyLineIsLogged();
    void theLogCanBeSilenced();
    void cancelDownloadDoesNothing();
};

void TestMiolka::theFirstPortIsKept()
{
    const support::Peer other;
    m_link->setPort(other.path());
    QTRY_COMPARE(m_statuses->count(), 1);
    QCOMPARE(m_link->portName(), m_peer->path());
    QCOMPARE(m_peer->lines().size(), 93);
    QVERIFY(other.lines().isEmpty());
}

void TestMiolka::anEmptyNameBeforeAnyDoesNothing()
{
    cMyMiolka link(&m_image, m_owner.get());
    link.setPort(QString());
    link.readStatus();
    QTest::qWait(50);
    QVERIFY(errorBox() == nullptr);
    QCOMPARE(link.portName(), QString());
    link.setPort(m_peer->path());
    QCOMPARE(link.portName(), m_peer->path());
}

void TestMiolka::everyCallOfSetPortAsksForTheStatus()
{
    for (const QString& name : {QString(), m_peer->path(), QStringLiteral("another")}) {
        m_statuses->clear();
        m_link->setPort(name);
        QTRY_COMPARE(m_statuses->count(), 1);
    }
    QCOMPARE(m_peer->lines().size(), 3 * 93);
}

void TestMiolka::aStatusQuerySendsItsLines()
{
    m_link->readStatus();
    QTRY_COMPARE(m_statuses->count(), 1);
    QStringList expected;
    for (const char* line : expected::statusLines) {
        expected.append(QLatin1String(line));
    }
    QCOMPARE(m_peer->lines(), expected);
    QCOMPARE(m_statuses->at(0).at(0).toStringList().size(), 13);
    QVERIFY(isPortFree());
}

void TestMiolka::aTransferSendsItsLines_data()
{
    QTest::addColumn<bool>("isWrite");
    QTest::addColumn<QString>("word");
    QTest::newRow("write") << true << "#WRITE";
    QTest::newRow("read") << false << "#READ";
}

void TestMiolka::aTransferSendsItsLines()
{
    QFETCH(bool, isWrite);
    QFETCH(QString, word);
    isWrite ? write(settingsRecords()) : read(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 69);
    QCOMPARE(m_peer->lines(), QStringList({QStringLiteral("#ROOT"), QStringLiteral("#HEX"),
                                           QStringLiteral("#EEPROM"), word}) +
                                  settingsRecords());
    QVERIFY(isPortFree());
}

void TestMiolka::anUnknownMemoryIsNotNamed()
{
    write({QStringLiteral(":00000001FF")}, static_cast<MemoryType>(5));
    QTRY_COMPARE(m_progress->count(), 4);
    QCOMPARE(m_peer->lines(),
             QStringList({QStringLiteral("#ROOT"), QStringLiteral("#HEX"), QStringLiteral("#WRITE"),
                          QStringLiteral(":00000001FF")}));
}

void TestMiolka::progressOfAWrite()
{
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 69);
    for (int i = 0; i < 69; ++i) {
        QCOMPARE(m_progress->at(i), QVariantList({0, 69, i + 1}));
    }
}

void TestMiolka::thePortIsClosedBeforeTheLastProgress()
{
    int checked = 0;
    connect(m_link, &cMyMiolka::writeProgress, this, [&](int /*min*/, int max, int progress) {
        QCOMPARE(isPortFree(), progress == max);
        ++checked;
    });
    write({QStringLiteral(":00000001FF")});
    QTRY_COMPARE(checked, 5);
}

void TestMiolka::recordsAreToldAfterTheLastAnswer()
{
    m_peer->setAnswer([this](const QByteArray& line) {
        // Until the last line has its answer, nothing is told.
        return m_records->isEmpty() ? line + "\r\n" : QByteArray("too early\r\n");
    });
    read(settingsRecords());
    QTRY_COMPARE(m_records->count(), 64);
    const QByteArray image = support::templateImage();
    for (int i = 0; i < 64; ++i) {
        const QVariantList& told = m_records->at(i);
        QCOMPARE(told.at(0).value<MemoryType>(), EEPROM);
        QCOMPARE(told.at(1).toUInt(), static_cast<unsigned>(16 * i));
        const auto data = told.at(2).value<QVector<quint8>>();
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(data.constData()), data.size()),
                 image.mid(16 * i, 16));
    }
}

void TestMiolka::theLastProgressFollowsTheRecords()
{
    QVector<int> recordsTold;
    connect(m_link, &cMyMiolka::writeProgress, this,
            [&] { recordsTold += static_cast<int>(m_records->count()); });
    read(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 69);
    QVector<int> expected(69, 0);
    expected.last() = 64;
    QCOMPARE(recordsTold, expected);
    QCOMPARE(m_progress->last(), QVariantList({0, 69, 69}));
}

void TestMiolka::aWriteTellsNoRecords()
{
    write(settingsRecords());
    QTRY_COMPARE(m_progress->count(), 69);
    QCOMPARE(m_records->count(), 0);
    QCOMPARE(m_statuses->count(), 0);
}

void TestMiolka::aStatusQueryTellsNoProgress()
{
    m_link->readStatus();
    QTRY_COMPARE(m_statuses->count(), 1);
    QCOMPARE(m_progress->count(), 0);
    QCOMPARE(m_records->count(), 0);
}

void TestMiolka::serviceCommandsSendOneLine_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("word");
    QTest::newRow("reset(true)") << 0 << "#RESET";
    QTest::newRow("reset(false)") << 1 << "#RESET";
    QTest::newRow("boot") << 2 << "#BOOT";
    QTest::newRow("clearStats") << 3 << "#CLEAR";
    QTest::newRow("powerOff") << 4 << "#OFF";
}

void TestMiolka::serviceCommandsSendOneLine()
{
    QFETCH(int, command);
    QFETCH(QString, word);
    const std::function<void()> commands[] = {
        [this] { m_link->reset(true); }, [this] { m_link->reset(false); },
        [this] { m_link->boot(); }, [this] { m_link->clearStats(); },
        [this] {
            m_link->powerOff();
        }};
    commands[command]();
    QTRY_COMPARE(m_peer->lines(), QStringList(word));
    QTest::qWait(50);
    QCOMPARE(m_peer->lines(), QStringList(word));
    QCOMPARE(m_statuses->count() + m_progress->count() + m_records->count(), 0);
    QVERIFY(isPortFree());
}

void TestMiolka::theNextLineWaitsForTheAnswer()
{
    m_peer->setAnswer([](const QByteArray& /*line*/) { return QByteArray(); });
    write(settingsRecords());
    QTRY_COMPARE(m_peer->lines().size(), 1);
    QTest::qWait(100);
    QCOMPARE(m_peer->lines().size(), 1);
    m_peer->send("#ROOT\r\n");
    QTRY_COMPARE(m_peer->lines().size(), 2);
    QTest::qWait(50);
    QCOMPARE(m_peer->lines().size(), 2);
    QCOMPARE(m_progress->count(), 1);
}

void TestMiolka::aSecondStatusRequestFollowsTheFirst()
{
    m_link->readStatus();
    m_link->readStatus();
    m_link->readStatus();
    QTRY_COMPARE(m_statuses->count(), 2);
    QTest::qWait(100);
    QCOMPARE(m_statuses->count(), 2);
    QCOMPARE(m_peer->lines().size(), 2 * 93);
    QVERIFY(errorBox() == nullptr);
}

void TestMiolka::requestsWaitForTheQuery()
{
    m_link->readStatus();
    write(settingsRecords());
    m_link->clearStats();
    QTRY_COMPARE(m_peer->lines().size(), 93 + 69 + 1);
    QCOMPARE(m_statuses->count(), 1);
    QCOMPARE(m_progress->count(), 69);
    QCOMPARE(m_peer->lines().at(96), QStringLiteral("#WRITE"));
    QCOMPARE(m_peer->lines().last(), QStringLiteral("#CLEAR"));
    QVERIFY(errorBox() == nullptr);
}

void TestMiolka::aTransferHoldsItsPort()
{
    m_link->readStatus();
    QCOMPARE(m_holds->count(), 0);
    read(settingsRecords());
    QCOMPARE(m_holds->count(), 1);
    QCOMPARE(m_holds->at(0).at(0).toString(), m_peer->path());
    QTRY_COMPARE(m_holds->count(), 2);
    QCOMPARE(m_progress->count(), 69);
    QCOMPARE(m_holds->at(1).at(0).toString(), QString());
}

void TestMiolka::portSettings()
{
    m_peer->setAnswer([](const QByteArray& /*line*/) { return QByteArray(); });
    m_link->readStatus();
    QTRY_COMPARE(m_peer->lines().size(), 1);
    const termios settings = m_peer->settings();
    QCOMPARE(cfgetispeed(&settings), static_cast<speed_t>(B9600));
    QCOMPARE(cfgetospeed(&settings), static_cast<speed_t>(B9600));
    QCOMPARE(settings.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
    QCOMPARE(settings.c_cflag & (PARENB | CSTOPB | CRTSCTS), static_cast<tcflag_t>(0));
    QCOMPARE(settings.c_iflag & (IXON | IXOFF), static_cast<tcflag_t>(0));
}

namespace {

QStringList logged;

void keepLog(QtMsgType /*type*/, const QMessageLogContext& context, const QString& text)
{
    if (QLatin1String(context.category) == QLatin1String("miolka.link")) {
        logged.append(text);
    }
}

} // namespace

void TestMiolka::everyLineIsLogged()
{
    logged.clear();
    m_peer->setAnswer([](const QByteArray& line) { return "!słabo\r\n" + line + "\r\n"; });
    const auto before = qInstallMessageHandler(keepLog);
    write({QStringLiteral(":00000001FF")});
    const bool isDone = QTest::qWaitFor([this] { return m_progress->count() == 5; });
    qInstallMessageHandler(before);
    QVERIFY(isDone);
    QCOMPARE(logged.filter(QStringLiteral("Zapisane: \t")).size(), 5);
    const QStringList received = logged.filter(QStringLiteral("Odczytane:\t"));
    QCOMPARE(received.size(), 2 * 5);
    QCOMPARE(received.filter(QStringLiteral("!słabo")).size(), 5); // notices, too
    QVERIFY(logged.at(3).contains(QStringLiteral("#HEX")));
}

void TestMiolka::theLogCanBeSilenced()
{
    logged.clear();
    const auto before = qInstallMessageHandler(keepLog);
    QLoggingCategory::setFilterRules(QStringLiteral("miolka.link.debug=false"));
    m_link->readStatus();
    const bool isDone = QTest::qWaitFor([this] { return m_statuses->count() == 1; });
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(before);
    QVERIFY(isDone);
    QVERIFY(logged.isEmpty());
}

void TestMiolka::cancelDownloadDoesNothing()
{
    write(settingsRecords());
    m_link->cancelDownload();
    QTRY_COMPARE(m_progress->count(), 69);
    QCOMPARE(m_peer->lines().size(), 69);
}

MIOLKA_GUI_TEST_MAIN(TestMiolka)
#include "test_miolka.moc"
