// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>

using support::Operation;
using support::SentLines;

/// Ports that come and go: several devices, one of another maker, and a device that goes away
/// because it was told to.
class TestPorts : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void theFirstDeviceIsUsedWhicheverIsChosen();
    void theChoiceIsKeptWhenAThirdAppears();
    void everyUnpluggingIsToldOnceTheDeviceInUseIsGone_data();
    void everyUnpluggingIsToldOnceTheDeviceInUseIsGone();
    void anotherDeviceDoesNotDisturbAWrite();
    void aForeignPortIsNeverOffered();
    void aResetIsNoLoss();
    void theBootLoaderIsToldOfNowAndThen();
    void theWindowCloses_data();
    void theWindowCloses();
    void aDeviceBackFromTheBootLoaderWorks();

private:
    void start(const QStringList& emulatorOptions = {});
    /// Starts with that many devices plugged in, and waits until nothing more is on its way.
    void startWithDevices(int count);
    void confirm(const QString& action);
    void sendToBootLoader();
    [[nodiscard]] QStringList ports() { return m_session->items(QStringLiteral("portSelect")); }
    /// Whether all of the error boxes that came up tell of the boot loader.
    [[nodiscard]] static bool areOfBootLoader(const QJsonArray& dialogs);

    std::unique_ptr<support::Session> m_session;
};

namespace {

QStringList portNames(const QVector<int>& devices)
{
    QStringList names;
    names.reserve(devices.size());
    for (const int device : devices) {
        names += QStringLiteral("ttyACM%1").arg(device);
    }
    return names;
}

} // namespace

void TestPorts::cleanup()
{
    m_session.reset();
}

void TestPorts::start(const QStringList& emulatorOptions)
{
    m_session = support::startSession(emulatorOptions);
    QVERIFY(m_session != nullptr);
    const QString error = support::plugInAndSettle(*m_session);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestPorts::startWithDevices(int count)
{
    start({QStringLiteral("--count"), QString::number(count)});
    for (int device = 1; device < count; ++device) {
        const SentLines sent(*m_session, 0);
        QCOMPARE(support::plugIn(*m_session, device), QString());
        // The list is made anew, and every change of the chosen port asks for the status.
        QCOMPARE(sent.completeStatus(), QString());
    }
    m_session->takeDialogs();
}

void TestPorts::theFirstDeviceIsUsedWhicheverIsChosen()
{
    startWithDevices(2);
    const QString selector = QStringLiteral("portSelect");
    const QString note = QStringLiteral("lPortNote");
    QCOMPARE(ports(), portNames({0, 1}));
    QVERIFY(m_session->text(note).isEmpty());
    QVERIFY(m_session->chooseText(selector, QStringLiteral("ttyACM1")));
    const QString expected =
        QStringLiteral("Transfers use ttyACM0; restart the program to use ttyACM1");
    m_session->waitFor([&] { return m_session->text(note) == expected; });
    QCOMPARE(m_session->text(note), expected);
    QVERIFY(m_session->chooseText(selector, QStringLiteral("ttyACM0")));
    QVERIFY(m_session->waitFor([&] { return m_session->text(note).isEmpty(); }));
    QVERIFY(m_session->takeDialogs().isEmpty());
    QVERIFY(support::linesToDevice(m_session->trace(), 1).isEmpty());
}

void TestPorts::everyUnpluggingIsToldOnceTheDeviceInUseIsGone_data()
{
    QTest::addColumn<QVector<int>>("order");
    QTest::newRow("in use, second, third") << QVector<int>{0, 1, 2};
    QTest::newRow("second, in use, third") << QVector<int>{1, 0, 2};
    QTest::newRow("third, second, in use") << QVector<int>{2, 1, 0};
}

void TestPorts::everyUnpluggingIsToldOnceTheDeviceInUseIsGone()
{
    QFETCH(QVector<int>, order);
    startWithDevices(3);
    QVector<int> left{0, 1, 2};
    for (const int device : order) {
        left.removeOne(device);
        const SentLines sent(*m_session, 0);
        QVERIFY(m_session->unplug(device));
        const QStringList expected = left.isEmpty() ? QStringList(QString()) : portNames(left);
        m_session->waitFor([&] { return ports() == expected; });
        QCOMPARE(ports(), expected);
        if (left.contains(0)) {
            QCOMPARE(sent.completeStatus(), QString());
            QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
        } else {
            // Every change of the list asks for the status, and the link keeps to its first port.
            QCOMPARE(support::closeErrorBox(*m_session), QString());
            QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 1);
        }
    }
    QCOMPARE(support::waitForNoDevice(*m_session), QString());
    QVERIFY(m_session->plug(0));
    QCOMPARE(support::waitForStatus(*m_session), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

void TestPorts::theChoiceIsKeptWhenAThirdAppears()
{
    start({QStringLiteral("--count"), QStringLiteral("3")});
    QCOMPARE(support::plugIn(*m_session, 1), QString());
    const QString selector = QStringLiteral("portSelect");
    QVERIFY(m_session->chooseText(selector, QStringLiteral("ttyACM1")));
    QCOMPARE(support::plugIn(*m_session, 2), QString());
    QCOMPARE(ports(), portNames({0, 1, 2}));
    QCOMPARE(m_session->text(selector), QStringLiteral("ttyACM1"));
    QVERIFY(m_session->text(QStringLiteral("lPortNote")).endsWith(QStringLiteral(" ttyACM1")));
    QVERIFY(m_session->takeDialogs().isEmpty());
}

void TestPorts::anotherDeviceDoesNotDisturbAWrite()
{
    constexpr int slow = 15;
    constexpr int middle = 30;
    constexpr int words = 4;
    const int lines = support::linesOf(Operation::Write);
    start({QStringLiteral("--count"), QStringLiteral("2")});
    QVERIFY(m_session->latency(slow));
    const SentLines sent(*m_session, 0);
    QCOMPARE(support::begin(*m_session, Operation::Write), QString());
    QVERIFY(sent.reach(middle));
    QVERIFY(m_session->plug(1));
    QVERIFY(m_session->waitForNoDialog());
    QVERIFY(sent.count() >= lines);
    QVERIFY(m_session->latency(0));
    QVERIFY(m_session->waitFor([this] { return ports() == portNames({0, 1}); }));
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
    const QStringList records = sent.lines().mid(words, lines - words);
    QCOMPARE(support::saved(*m_session), records.join(QLatin1Char('\n')).toLatin1());
    QVERIFY(support::linesToDevice(m_session->trace(), 1).isEmpty());
}

void TestPorts::aForeignPortIsNeverOffered()
{
    m_session = support::startSession({QStringLiteral("--foreign")});
    QVERIFY(m_session != nullptr);
    QCOMPARE(ports(), QStringList(QStringLiteral("No devices found")));
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QCOMPARE(ports(), portNames({0}));
    QCOMPARE(support::unplug(*m_session), QString());
    QCOMPARE(ports(), QStringList(QString()));
    constexpr int foreign = 1; // behind the only device
    QVERIFY(support::linesToDevice(m_session->trace(), foreign).isEmpty());
    QCOMPARE(m_session->trace().filter(QStringLiteral(" > 0 ")),
             m_session->trace().filter(QStringLiteral(" > ")));
}

void TestPorts::confirm(const QString& action)
{
    m_session->takeDialogs();
    QVERIFY(m_session->trigger(action));
    QVERIFY(m_session->waitFor([this] { return !m_session->dialog().isEmpty(); }));
    QVERIFY(m_session->answer(QStringLiteral("Yes")));
}

void TestPorts::aResetIsNoLoss()
{
    start();
    const SentLines sent(*m_session);
    confirm(QStringLiteral("actionReset"));
    QCOMPARE(support::waitForNoDevice(*m_session), QString());
    QCOMPARE(sent.completeStatus(), QString());
    QCOMPARE(sent.lines().first(), QStringLiteral("#RESET"));
    QCOMPARE(support::waitForStatus(*m_session), QString());
    QCOMPARE(support::checkDeviceActions(*m_session, true), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
    QCOMPARE(support::exchangeEverything(*m_session), QString());
}

void TestPorts::sendToBootLoader()
{
    start();
    confirm(QStringLiteral("actionFirmwareUpdate"));
    QVERIFY(m_session->waitForDialog(QStringLiteral("Error")));
    QCOMPARE(support::waitForNoDevice(*m_session), QString());
}

bool TestPorts::areOfBootLoader(const QJsonArray& dialogs)
{
    return std::all_of(dialogs.begin(), dialogs.end(), [](const QJsonValue& dialog) {
        const QJsonObject box = dialog.toObject();
        return box.value(QLatin1String("title")).toString() != QLatin1String("Error") ||
               box.value(QLatin1String("text")).toString().contains(QLatin1String("FLIP"));
    });
}

void TestPorts::theBootLoaderIsToldOfNowAndThen()
{
    constexpr int rest = 4500; // a little less than the program's
    sendToBootLoader();
    QJsonArray dialogs = m_session->takeDialogs();
    QCOMPARE(support::errorBoxes(dialogs), 1);
    QVERIFY(areOfBootLoader(dialogs));
    QCOMPARE(support::closeErrorBox(*m_session), QString());
    QElapsedTimer clock;
    clock.start();
    QVERIFY(m_session->waitForDialog(QStringLiteral("Error"), 3 * rest));
    QVERIFY2(clock.elapsed() > rest, qPrintable(QString::number(clock.elapsed())));
    dialogs = m_session->takeDialogs();
    QCOMPARE(support::errorBoxes(dialogs), 1);
    QVERIFY(areOfBootLoader(dialogs));
}

void TestPorts::theWindowCloses_data()
{
    QTest::addColumn<bool>("isBoxClosed");
    QTest::newRow("while it is told of the boot loader") << false;
    QTest::newRow("after that") << true;
}

void TestPorts::theWindowCloses()
{
    QFETCH(bool, isBoxClosed);
    sendToBootLoader();
    if (isBoxClosed) {
        QCOMPARE(support::closeErrorBox(*m_session), QString());
    }
    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
}

void TestPorts::aDeviceBackFromTheBootLoaderWorks()
{
    sendToBootLoader();
    QCOMPARE(support::closeErrorBox(*m_session), QString());
    QVERIFY(m_session->unplug());
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QCOMPARE(support::exchangeEverything(*m_session), QString());
    QVERIFY(areOfBootLoader(m_session->takeDialogs()));
}

QTEST_GUILESS_MAIN(TestPorts)
#include "test_ports.moc"
