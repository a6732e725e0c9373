// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/sim/paneltest.h"
#include "tests/support/contrast.h"

namespace simulation = support::simulation;
using support::speedButtons;

/// The page of the simulation: how it is built, and what its controls do.
class TestSimWidget : public support::PanelTest
{
    Q_OBJECT

private slots:
    void theSlider();
    void framesAreRaised();
    void captions_data();
    void captions();
    void idle();
    void startingInItsOrder();
    void runningUntilTheWorkerHasEnded();
    void theSpeedReachesTheDevice();
    void stepsOfTheSpeed_data();
    void stepsOfTheSpeed();
    void stepsEndAtTheRange();
    void stopOfTheSpeed();
    void theEndSetsTheSpeedToZero();
    void noSpeedWhileIdle();
    void stopCanBeRead_data();
    void stopCanBeRead();
    void keysMoveTheSlider_data();
    void keysMoveTheSlider();
    void noPort();
    void thePortNamedLast();
    void aPortThatCannotBeOpened();
};

void TestSimWidget::theSlider()
{
    QCOMPARE(slider()->orientation(), Qt::Vertical);
    QCOMPARE(slider()->minimum(), -500);
    QCOMPARE(slider()->maximum(), 500);
    QCOMPARE(slider()->singleStep(), 1);
    QCOMPARE(slider()->pageStep(), 10);
    QCOMPARE(slider()->value(), 0);
    QCOMPARE(slider()->tickPosition(), QSlider::NoTicks);
    QCOMPARE(slider()->tickInterval(), 100);
    QCOMPARE(slider()->minimumWidth(), 50);
    QVERIFY(slider()->invertedAppearance());
    QVERIFY(slider()->invertedControls());
    // The scale stands at its ends and its middle.
    const auto middleOf = [this](const char* name) {
        const QRect label = child<QLabel>(name)->rect();
        return child<QLabel>(name)->mapTo(m_panel.get(), label.center()).y();
    };
    const int top = slider()->mapTo(m_panel.get(), QPoint()).y();
    const int height = slider()->height();
    const int near = child<QLabel>("label_123")->height();
    QVERIFY(qAbs(middleOf("label_121") - top) <= near);
    QVERIFY(qAbs(middleOf("label_123") - (top + height / 2)) <= 2);
    QVERIFY(qAbs(middleOf("label_126") - (top + height)) <= near);
    QCOMPARE(text("label_121"), QStringLiteral("-5.00 m/s"));
    QCOMPARE(text("label_123"), QStringLiteral("0.00 m/s"));
    QCOMPARE(text("label_126"), QStringLiteral("5.00 m/s"));
}

void TestSimWidget::framesAreRaised()
{
    for (const char* name : {"frame", "frame_2", "frame_3"}) {
        QCOMPARE(child<QFrame>(name)->frameShape(), QFrame::WinPanel);
        QCOMPARE(child<QFrame>(name)->frameShadow(), QFrame::Raised);
    }
    QVERIFY(child<QFrame>("frame")->isAncestorOf(slider()));
    QVERIFY(child<QFrame>("frame_2")->isAncestorOf(child<QLabel>("simSpeedDownAvr")));
    QVERIFY(child<QFrame>("frame_3")->isAncestorOf(child<QLabel>("simTimer3")));
}

void TestSimWidget::captions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("polish");
    QTest::addColumn<QString>("english");
    QTest::newRow("start") << "pbStartSim"
                           << "Start symulacji"
                           << "START simulation";
    QTest::newRow("stop") << "pbStopSim"
                          << "Stop symulacji"
                          << "STOP simulation";
    const char* const steps[] = {"-1 m/s",    "-0.1 m/s", "-0.01 m/s", "Stop",
                                 "+0.01 m/s", "+0.1 m/s", "+1 m/s"};
    for (int i = 0; i < 7; ++i) {
        QTest::newRow(steps[i]) << speedButtons[i] << steps[i] << steps[i];
    }
}

void TestSimWidget::captions()
{
    QFETCH(QString, name);
    QCOMPARE(m_panel->windowTitle(), QStringLiteral("Form"));
    QTEST(button(qPrintable(name))->text(), "english");
    showInPolish();
    QTEST(button(qPrintable(name))->text(), "polish");
}

void TestSimWidget::idle()
{
    QVERIFY(isIdle());
    QVERIFY(m_peer->lines().isEmpty());
}

void TestSimWidget::startingInItsOrder()
{
    QStringList order;
    connect(m_panel.get(), &cMySimWidget::portNeeded, this,
            [&] { order += isIdle() ? "portNeeded" : "portNeeded too late"; });
    connect(m_panel.get(), &cMySimWidget::startSimulation, this,
            [&](const QString& port, double speed) {
                const bool isRight = port == m_peer->path() && speed == 0.0 && isRunning();
                order += isRight ? "startSimulation" : "startSimulation wrongly";
            });
    connect(m_panel.get(), &cMySimWidget::simulationInProgress, this, [&](bool state) {
        order += state == isRunning() && state != isIdle() ? QVariant(state).toString() : "wrong";
    });
    button("pbStartSim")->click();
    QCOMPARE(order, QStringList({"portNeeded", "startSimulation", "true"}));
    button("pbStopSim")->click();
    QVERIFY(support::waitFor([this] { return isIdle(); }));
    QCOMPARE(order, QStringList({"portNeeded", "startSimulation", "true", "false"}));
}

void TestSimWidget::runningUntilTheWorkerHasEnded()
{
    const QSignalSpy progress(m_panel.get(), &cMySimWidget::simulationInProgress);
    button("pbStartSim")->click();
    QVERIFY(isRunning());
    QVERIFY(support::waitFor([this] { return m_peer->lines().size() > 100; }));
    QVERIFY(isRunning());
    button("pbStopSim")->click();
    QVERIFY(isRunning());
    QVERIFY(support::waitFor([this] { return isIdle(); }));
    QCOMPARE(m_peer->lines().mid(m_peer->lines().size() - 2), simulation::end());
    QCOMPARE(progress.count(), 2);
    QTest::qWait(100);
    QCOMPARE(progress.count(), 2);
}

void TestSimWidget::theSpeedReachesTheDevice()
{
    button("pbStartSim")->click();
    QVERIFY(support::waitFor([this] { return m_peer->lines().size() > 40; }));
    button("pbAdd1")->click();
    button("pbAdd1")->click();
    QElapsedTimer clock;
    clock.start();
    const auto last = [this] {
        return simulation::pressures(m_peer->lines()).last();
    };
    QVERIFY(support::waitFor([&last] { return last() >= 1013 + 100; }));
    QVERIFY(clock.elapsed() >= 250); // a metre at 2 m/s, but for a long cycle before
    button("pbSet0")->click();
    QVERIFY(support::waitFor([&] {
        const QVector<int> all = simulation::pressures(m_peer->lines());
        return all.size() > 5 && all.mid(all.size() - 5) == QVector<int>(5, all.last());
    }));
    QVERIFY(last() >= 1013 + 100);
    slider()->setValue(-500);
    QVERIFY(support::waitFor([&last] { return last() == 1013; }));
}

void TestSimWidget::stepsOfTheSpeed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("change");
    const int changes[] = {-100, -10, -1, 0, 1, 10, 100};
    for (int i = 0; i < 7; ++i) {
        QTest::newRow(speedButtons[i]) << speedButtons[i] << changes[i];
    }
}

void TestSimWidget::stepsOfTheSpeed()
{
    QFETCH(QString, name);
    QFETCH(int, change);
    button("pbStartSim")->click();
    const QSignalSpy speeds(m_panel.get(), &cMySimWidget::simSpeedChanged);
    button(qPrintable(name))->click();
    QCOMPARE(slider()->value(), change);
    QCOMPARE(speeds.count(), change == 0 ? 0 : 1);
    if (change != 0) {
        QCOMPARE(speeds.first().first().toInt(), change);
    }
}

void TestSimWidget::stepsEndAtTheRange()
{
    button("pbStartSim")->click();
    for (int i = 0; i < 6; ++i) {
        button("pbAdd1")->click();
    }
    QCOMPARE(slider()->value(), 500);
    slider()->setValue(-450);
    button("pbSub1")->click();
    QCOMPARE(slider()->value(), -500);
    button("pbSub01")->click();
    button("pbSub001")->click();
    QCOMPARE(slider()->value(), -500);
}

void TestSimWidget::stopOfTheSpeed()
{
    button("pbStartSim")->click();
    slider()->setValue(321);
    const QSignalSpy speeds(m_panel.get(), &cMySimWidget::simSpeedChanged);
    button("pbSet0")->click();
    QCOMPARE(slider()->value(), 0);
    QCOMPARE(speeds.count(), 1);
    QCOMPARE(speeds.first().first().toInt(), 0);
}

void TestSimWidget::theEndSetsTheSpeedToZero()
{
    button("pbStartSim")->click();
    slider()->setValue(321);
    const QSignalSpy speeds(m_panel.get(), &cMySimWidget::simSpeedChanged);
    button("pbStopSim")->click();
    QVERIFY(support::waitFor([this] { return button("pbStartSim")->isEnabled(); }));
    QCOMPARE(slider()->value(), 0);
    QCOMPARE(speeds.count(), 1);
    QCOMPARE(speeds.first().first().toInt(), 0);
    // The next dive stays at the surface until somebody steers.
    m_peer->forgetLines();
    button("pbStartSim")->click();
    const auto pressures = [this] {
        return simulation::pressures(m_peer->lines());
    };
    QVERIFY(support::waitFor([&pressures] { return pressures().size() >= 10; }));
    const QVector<int> written = pressures();
    QCOMPARE(written, QVector<int>(written.size(), 1013));
    QCOMPARE(speeds.count(), 1);
}

void TestSimWidget::noSpeedWhileIdle()
{
    const QSignalSpy speeds(m_panel.get(), &cMySimWidget::simSpeedChanged);
    for (const char* name : speedButtons) {
        QTest::mouseClick(button(name), Qt::LeftButton);
    }
    QTest::keyClick(slider(), Qt::Key_PageDown);
    QVERIFY(isIdle());
    QVERIFY(speeds.isEmpty());
}

void TestSimWidget::stopCanBeRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("of the speed") << "pbSet0";
    QTest::newRow("of the simulation") << "pbStopSim";
}

void TestSimWidget::stopCanBeRead()
{
    QFETCH(QString, name);
    QPushButton* stop = button(qPrintable(name));
    button("pbStartSim")->click();
    const QImage picture = stop->grab().toImage();
    // Beside the text, from its upper to its lower end.
    constexpr int border = 6;
    const int half = stop->fontMetrics().height() / 2;
    for (int y = stop->height() / 2 - half; y <= stop->height() / 2 + half; ++y) {
        QVERIFY(support::contrast(picture.pixelColor(border, y), Qt::white) >= 4.5);
    }
    QCOMPARE(stop->palette().color(QPalette::Active, QPalette::ButtonText), QColor(Qt::white));
}

void TestSimWidget::keysMoveTheSlider_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("value");
    QTest::newRow("down is deeper") << int(Qt::Key_Down) << 1;
    QTest::newRow("up is shallower") << int(Qt::Key_Up) << -1;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << 10;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << -10;
}

void TestSimWidget::keysMoveTheSlider()
{
    QFETCH(int, key);
    QFETCH(int, value);
    button("pbStartSim")->click();
    QTest::keyClick(slider(), static_cast<Qt::Key>(key));
    QCOMPARE(slider()->value(), value);
}

void TestSimWidget::noPort()
{
    m_panel->setPortName(QString());
    const QSignalSpy progress(m_panel.get(), &cMySimWidget::simulationInProgress);
    button("pbStartSim")->click();
    QVERIFY(isRunning());
    QVERIFY(support::waitFor([this] { return isIdle(); }));
    QCOMPARE(progress.count(), 2);
}

void TestSimWidget::thePortNamedLast()
{
    support::Peer other;
    m_panel->setPortName(other.path());
    button("pbStartSim")->click();
    QVERIFY(support::waitFor([&other] { return !other.lines().isEmpty(); }));
    QVERIFY(m_peer->lines().isEmpty());
    m_panel->end();
}

void TestSimWidget::aPortThatCannotBeOpened()
{
    m_panel->setPortName(QStringLiteral("/dev/no-such-port"));
    button("pbStartSim")->click();
    QVERIFY(support::waitFor([this] { return isIdle(); }));
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

MIOLKA_GUI_TEST_MAIN(TestSimWidget)
#include "test_simwidget.moc"
