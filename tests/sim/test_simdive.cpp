// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/virtualdevice.h"
#include "emulator/virtualport.h"
#include "tests/sim/simulation.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cmath>

using support::RunningWorker;

/// Simulated dives on the virtual device, which answers as fast as it can in a thread of its own.
class TestSimDive : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void tenSecondsAtOneMetrePerSecond();

private:
    template <typename Call>
    void inThread(Call call)
    {
        QMetaObject::invokeMethod(m_port.get(), call, Qt::BlockingQueuedConnection);
    }

    std::unique_ptr<cMyVirtualDevice> m_device;
    std::unique_ptr<cMyVirtualPort> m_port;
    std::unique_ptr<QThread> m_thread;
};

void TestSimDive::init()
{
    m_device = std::make_unique<cMyVirtualDevice>();
    m_port = std::make_unique<cMyVirtualPort>(m_device.get());
    m_thread = std::make_unique<QThread>();
    m_device->moveToThread(m_thread.get());
    m_port->moveToThread(m_thread.get());
    m_thread->start();
    inThread([this] { m_port->plug(); });
}

void TestSimDive::cleanup()
{
    inThread([this] {
        m_port->unplug();
        m_port.reset();
        m_device.reset();
    });
    m_thread->quit();
    m_thread->wait();
}

void TestSimDive::tenSecondsAtOneMetrePerSecond()
{
    RunningWorker run;
    QString port;
    inThread([&] { port = m_port->path(); });
    QElapsedTimer clock;
    run.startAt(port, 1.0);
    QVERIFY(support::waitFor([&run] { return !run.blocks().isEmpty(); }));
    clock.start();
    constexpr int duration = 10000;
    QTest::qWait(duration);
    run.worker().stopWork();
    const auto elapsed = static_cast<double>(clock.elapsed());
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    // Cycles far shorter than a few milliseconds, or there would be nothing to lose.
    QVERIFY(run.blocks().size() > duration / 5);
    cMyHexRecord record;
    QVERIFY(record.fromString(run.blocks().last().first()));
    const double rise = record.getQint16(0) - 1013;
    const double expected = elapsed / 10; // 100 mbar each second
    QVERIFY2(std::abs(rise - expected) < expected / 100,
             qPrintable(QStringLiteral("%1 instead of %2 mbar").arg(rise).arg(expected)));
}

QTEST_GUILESS_MAIN(TestSimDive)
#include "test_simdive.moc"
