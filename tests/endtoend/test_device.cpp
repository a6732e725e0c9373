// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/statefile.h"
#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"
#include "tests/support/desktop.h"
#include "tests/support/template.h"

#include <QtTest>

#include <algorithm>

using support::Operation;
using support::SentLines;

/// What a person does with one device that nothing is wrong with.
class TestDevice : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void nothingWorksWithoutADevice();
    void aDeviceShowsItsStatus();
    void whatIsWrittenIsInTheDevice();
    void recordsWithWrongChecksumsChangeNothing();
    void startPageOpenedDuringAQueryAsksOnceMore();
    void everyServiceCommandIsSentWhenConfirmed_data();
    void everyServiceCommandIsSentWhenConfirmed();
    void nothingIsSentWhenRefused_data();
    void nothingIsSentWhenRefused();
    void aRealScreenShowsTheStatus();

private:
    /// With the first device plugged in and the start page in front.
    void startWithDevice(const QStringList& emulatorOptions = {});
    void plugInAndSettle();

    std::unique_ptr<support::Session> m_session;
};

namespace {

constexpr int parametersPage = 1;
constexpr int startPage = 0;

const QString exampleTitle = QStringLiteral("Training dives, 20 m");

struct Service
{
    const char* action;
    const char* word;
};

constexpr Service services[] = {
    {"actionReset", "#RESET"},
    {"actionClearStats", "#CLEAR"},
    {"actionPowerOff", "#OFF"},
    {"actionFirmwareUpdate", "#BOOT"},
};

} // namespace

void TestDevice::cleanup()
{
    m_session.reset();
}

void TestDevice::plugInAndSettle()
{
    const QString error = support::plugInAndSettle(*m_session);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestDevice::startWithDevice(const QStringList& emulatorOptions)
{
    m_session = support::startSession(emulatorOptions);
    QVERIFY(m_session != nullptr);
    plugInAndSettle();
}

void TestDevice::nothingWorksWithoutADevice()
{
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    QCOMPARE(m_session->items(QStringLiteral("portSelect")),
             QStringList(QStringLiteral("No devices found")));
    QCOMPARE(m_session->isEnabled(QStringLiteral("portSelect")), std::make_optional(false));
    QCOMPARE(support::checkDeviceActions(*m_session, false), QString());
    const QStringList actions = support::deviceActions();
    for (const QString& action : actions) {
        const auto tip = m_session->ask(QStringLiteral("statusTip"), action);
        QCOMPARE(tip.value_or(QJsonValue()).toString(), QStringLiteral("Connect a Miolka first."));
        QVERIFY(!m_session->trigger(action));
    }
    QVERIFY(m_session->page(startPage));
    QVERIFY(m_session->dialog().isEmpty());
    QVERIFY(m_session->takeDialogs().isEmpty());
    QVERIFY(m_session->trace().isEmpty());
}

void TestDevice::aDeviceShowsItsStatus()
{
    startWithDevice();
    QCOMPARE(m_session->text(QStringLiteral("lMiolkaPort")), QStringLiteral("ttyACM0"));
    QCOMPARE(m_session->text(QStringLiteral("lSerialNumber")), QStringLiteral("1001"));
    QCOMPARE(m_session->text(QStringLiteral("lParamTytul")), exampleTitle);
    QCOMPARE(m_session->items(QStringLiteral("portSelect")),
             QStringList(QStringLiteral("ttyACM0")));
    const auto tip = m_session->ask(QStringLiteral("statusTip"), QStringLiteral("actionReset"));
    QVERIFY(tip.value_or(QJsonValue()).toString() != QLatin1String("Connect a Miolka first."));
    QVERIFY(m_session->takeDialogs().isEmpty());
}

void TestDevice::whatIsWrittenIsInTheDevice()
{
    const QTemporaryDir directory;
    const QString state = directory.filePath(QStringLiteral("state"));
    startWithDevice({QStringLiteral("--state"), state});
    QCOMPARE(support::transfer(*m_session, QStringLiteral("actionReadSettings")), QString());
    QVERIFY(m_session->page(parametersPage));
    QCOMPARE(m_session->text(QStringLiteral("leTitle")), exampleTitle);
    const QByteArray before = support::saved(*m_session);

    QVERIFY(m_session->type(QStringLiteral("leTitle"), QStringLiteral("Night dive")));
    QCOMPARE(support::transfer(*m_session, QStringLiteral("actionWriteSettings")), QString());
    const QByteArray written = support::saved(*m_session);
    QVERIFY(written.size() == before.size() && written != before);

    QCOMPARE(support::startAfresh(*m_session), QString());
    QVERIFY(m_session->text(QStringLiteral("leTitle")) != QLatin1String("Night dive"));
    QCOMPARE(support::transfer(*m_session, QStringLiteral("actionReadSettings")), QString());
    QCOMPARE(support::saved(*m_session), written);
    QCOMPARE(m_session->text(QStringLiteral("leTitle")), QStringLiteral("Night dive"));

    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
    const auto devices = emulator::readState(state);
    QVERIFY(devices.has_value() && devices->size() == 1);
    const QByteArray eeprom = devices->first().bytes(EEPROM);
    QCOMPARE(support::settingsText(eeprom.left(image::settingsImageSize)), written);
}

void TestDevice::recordsWithWrongChecksumsChangeNothing()
{
    startWithDevice();
    const QByteArray before = support::saved(*m_session);
    QVERIFY(!before.isEmpty());
    QVERIFY(m_session->fault(QStringLiteral("bad-checksum=1")));
    const SentLines sent(*m_session);
    QCOMPARE(support::transfer(*m_session, QStringLiteral("actionReadSettings")), QString());
    QCOMPARE(sent.complete(support::linesOf(Operation::Read)), QString());
    QCOMPARE(support::saved(*m_session), before);
}

void TestDevice::startPageOpenedDuringAQueryAsksOnceMore()
{
    constexpr int slow = 10;
    constexpr int early = 10;
    const int lines = support::linesOf(Operation::Status);
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    QVERIFY(m_session->page(parametersPage));
    QVERIFY(m_session->latency(slow));
    const SentLines sent(*m_session);
    QVERIFY(m_session->plug());
    QVERIFY(sent.reach(early));
    QVERIFY(m_session->page(startPage));
    QVERIFY(sent.count() < lines);
    QCOMPARE(sent.complete(2 * lines), QString());
    QCOMPARE(sent.lines().mid(0, lines), sent.lines().mid(lines));
    QCOMPARE(support::waitForStatus(*m_session), QString());
    QVERIFY(m_session->takeDialogs().isEmpty());
}

void TestDevice::everyServiceCommandIsSentWhenConfirmed_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("word");
    for (const Service& service : services) {
        QTest::newRow(service.action)
            << QString::fromLatin1(service.action) << QString::fromLatin1(service.word);
    }
}

void TestDevice::everyServiceCommandIsSentWhenConfirmed()
{
    QFETCH(QString, action);
    QFETCH(QString, word);
    startWithDevice();
    const SentLines sent(*m_session);
    QVERIFY(m_session->trigger(action));
    QVERIFY(m_session->waitFor([this] { return !m_session->dialog().isEmpty(); }));
    QCOMPARE(sent.count(), 0);
    QVERIFY(m_session->answer(QStringLiteral("Yes")));
    QVERIFY(sent.reach(1));
    QCOMPARE(sent.lines().first(), word);
}

void TestDevice::nothingIsSentWhenRefused_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("No") << QStringLiteral("No");
    QTest::newRow("Escape") << QStringLiteral("escape");
}

void TestDevice::nothingIsSentWhenRefused()
{
    QFETCH(QString, button);
    startWithDevice();
    const SentLines sent(*m_session);
    for (const Service& service : services) {
        QVERIFY(m_session->trigger(QString::fromLatin1(service.action)));
        QVERIFY(m_session->waitFor([this] { return !m_session->dialog().isEmpty(); }));
        QVERIFY(m_session->answer(button));
        QVERIFY(m_session->waitForNoDialog());
    }
    constexpr int questions = 4;
    QCOMPARE(m_session->takeDialogs().size(), questions);
    // Whatever the link was asked to do it does first; the query then stands alone.
    QCOMPARE(support::begin(*m_session, Operation::Status), QString());
    QCOMPARE(sent.complete(support::linesOf(Operation::Status)), QString());
    const QStringList lines = sent.lines();
    QVERIFY(std::none_of(std::cbegin(services), std::cend(services), [&lines](const Service& each) {
        return lines.contains(QString::fromLatin1(each.word));
    }));
}

void TestDevice::aRealScreenShowsTheStatus()
{
    support::Desktop desktop;
    QVERIFY(desktop.isRunning());
    m_session = support::startSession({}, desktop.environment());
    QVERIFY(m_session != nullptr);
    plugInAndSettle();
    QVERIFY(!desktop.focus(QStringLiteral("^MIOLKAsoft")).isEmpty());
    QCOMPARE(m_session->text(QStringLiteral("lParamTytul")), exampleTitle);
    desktop.photograph(QStringLiteral("device-status"));
    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
}

QTEST_GUILESS_MAIN(TestDevice)
#include "test_device.moc"
