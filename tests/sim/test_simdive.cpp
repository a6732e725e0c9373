// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/sim/simulation.h"
#include "tests/support/serveddevice.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cmath>

using support::RunningWorker;

/// Simulated dives on the virtual device, which answers as fast as it can in a thread of its own.
class TestSimDive : public QObject
{
    Q_OBJECT

private slots:
    void tenSecondsAtOneMetrePerSecond();
};

void TestSimDive::tenSecondsAtOneMetrePerSecond()
{
    support::ServedDevice device;
    RunningWorker run;
    QElapsedTimer clock;
    run.startAt(device.path(), 1.0);
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
