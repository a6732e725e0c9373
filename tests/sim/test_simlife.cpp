// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sim/simwidget.h"
#include "tests/sim/simulation.h"
#include "tests/support/guitest.h"
#include "tests/support/serveddevice.h"

#include <QDir>
#include <QElapsedTimer>
#include <QPushButton>

/// Simulations that begin and end at any moment: exactly one end for each, and nothing left behind.
class TestSimLife : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aHundredStartsFromInsideTheEnd();
    void closedSoonAfterTheStart();
    void endedAtAnyMoment();
    void endedWhileTheEndIsOnItsWay();
    void endedWhileIdle();
    void destroyedWithASilentDevice();
    void manySimulationsLeaveNothing();
    void stopRightAfterStart();

private:
    [[nodiscard]] QPushButton* button(const char* name) const
    {
        return m_panel->findChild<QPushButton*>(QString::fromLatin1(name));
    }
    [[nodiscard]] bool isIdle() const { return button("pbStartSim")->isEnabled(); }

    std::unique_ptr<support::ServedDevice> m_device;
    std::unique_ptr<cMySimWidget> m_panel;
};

namespace {

int entries(const char* directory)
{
    const QStringList names =
        QDir(QString::fromLatin1(directory))
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    return static_cast<int>(names.size());
}

/// A thread that was waited for is there for a moment more.
bool waitForThreads(int count)
{
    return support::waitFor([count] { return entries("/proc/self/task") == count; });
}

} // namespace

void TestSimLife::init()
{
    m_device = std::make_unique<support::ServedDevice>();
    m_panel = std::make_unique<cMySimWidget>();
    m_panel->setPortName(m_device->path());
}

void TestSimLife::cleanup()
{
    m_panel.reset();
    m_device.reset();
}

void TestSimLife::aHundredStartsFromInsideTheEnd()
{
    constexpr int count = 100;
    const int threads = entries("/proc/self/task");
    QVector<bool> told;
    connect(m_panel.get(), &cMySimWidget::simulationInProgress, this, [&](bool state) {
        told.append(state);
        if (state) {
            button("pbStopSim")->click();
        } else if (told.size() < 2 * count) {
            button("pbStartSim")->click();
        }
    });
    int begun = 0;
    m_device->inThread([&] {
        connect(&m_device->device(), &cMyVirtualDevice::simulationStarted, &m_device->device(),
                [&begun] { ++begun; });
    });
    button("pbStartSim")->click();
    QVERIFY(support::waitFor([&] { return told.size() >= 2 * count; }));
    QTest::qWait(200);
    QCOMPARE(told.size(), 2 * count);
    for (int i = 0; i < told.size(); ++i) {
        QCOMPARE(told.at(i), i % 2 == 0);
    }
    QVERIFY(!m_device->isSimulating());
    QCOMPARE(begun, count); // no worker of before began once more
    QVERIFY(waitForThreads(threads));
}

void TestSimLife::closedSoonAfterTheStart()
{
    const int threads = entries("/proc/self/task");
    constexpr int microseconds = 5000;
    constexpr int step = 100;
    for (int delay = 0; delay <= microseconds; delay += step) {
        m_panel->show();
        button("pbStartSim")->click();
        QThread::usleep(static_cast<unsigned long>(delay));
        m_panel = std::make_unique<cMySimWidget>(); // the old one goes in the middle of it
        m_panel->setPortName(m_device->path());
    }
    QVERIFY(support::waitFor([this] { return !m_device->isSimulating(); }));
    QVERIFY(waitForThreads(threads));
}

void TestSimLife::endedAtAnyMoment()
{
    const int threads = entries("/proc/self/task");
    const QSignalSpy told(m_panel.get(), &cMySimWidget::simulationInProgress);
    constexpr int count = 40;
    // From the moment on for which the line is watched before the first word.
    unsigned long delay = 40;
    for (int i = 0; i < count; ++i) {
        button("pbStartSim")->click();
        QThread::msleep(delay++);
        m_panel->end();
        QVERIFY(isIdle());
        QCOMPARE(told.count(), 2 * (i + 1));
        QVERIFY(support::waitFor([this] { return !m_device->isSimulating(); }));
    }
    QCoreApplication::processEvents();
    QCOMPARE(told.count(), 2 * count);
    QVERIFY(waitForThreads(threads));
}

void TestSimLife::endedWhileTheEndIsOnItsWay()
{
    m_panel->setPortName(QString());
    const QSignalSpy told(m_panel.get(), &cMySimWidget::simulationInProgress);
    button("pbStartSim")->click();
    QThread::msleep(100);
    QCOMPARE(told.count(), 1);
    m_panel->end();
    QCOMPARE(told.count(), 2);
    QTest::qWait(100);
    QCOMPARE(told.count(), 2);
    QVERIFY(isIdle());
}

void TestSimLife::endedWhileIdle()
{
    const QSignalSpy told(m_panel.get(), &cMySimWidget::simulationInProgress);
    m_panel->end();
    QVERIFY(told.isEmpty());
    QVERIFY(isIdle());
}

void TestSimLife::destroyedWithASilentDevice()
{
    m_device->inThread([this] { m_device->port().setDevice(nullptr); });
    button("pbStartSim")->click();
    QThread::msleep(200);
    QElapsedTimer clock;
    clock.start();
    m_panel.reset();
    QVERIFY(clock.elapsed() < cMyLineChannel::answerPatience / 2);
}

void TestSimLife::manySimulationsLeaveNothing()
{
    const auto simulate = [this] {
        button("pbStartSim")->click();
        QTest::qWait(60);
        button("pbStopSim")->click();
        return support::waitFor([this] { return isIdle(); });
    };
    QVERIFY(simulate());
    QTest::qWait(50);
    const int threads = entries("/proc/self/task");
    const int files = entries("/proc/self/fd");
    const auto children = m_panel->findChildren<QObject*>().size();
    constexpr int count = 30;
    for (int i = 0; i < count; ++i) {
        QVERIFY(simulate());
    }
    QVERIFY(waitForThreads(threads));
    QCOMPARE(entries("/proc/self/fd"), files);
    QCOMPARE(m_panel->findChildren<QObject*>().size(), children);
}

void TestSimLife::stopRightAfterStart()
{
    button("pbStartSim")->click();
    button("pbStopSim")->click();
    QVERIFY(support::waitFor([this] { return isIdle(); }));
    QVERIFY(!m_device->isSimulating());
}

MIOLKA_GUI_TEST_MAIN(TestSimLife)
#include "test_simlife.moc"
